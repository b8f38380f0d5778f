#include "cli/context/losses.h"
#include "cli/context/settings_context.h"
#include "cli/context/settings_lines.h"
#include "cli/settings/commands.h"
#include "cli/terminal/error.h"
#include "cli/terminal/questions.h"
#include "velmora/platform/files.h"
#include "velmora/settings/setting_write.h"

namespace velmora::cli {
namespace {

// Refuses a setting that would not be read back as given.
void RequireReadable(const ParameterFile& file, const CString& key, const CString& value) {
  const std::string why = WhyUnreadable(file, key, value);
  if (why.empty()) return;
  const std::string name = ToUtf8(file.name);
  if (const Settings built_in(file, {}); file.rig && built_in.Find(key) == nullptr)
    throw Refusal(why + "; to list them: velmora settings list --file " + name + "; nothing was written" +
                  built_in.DidYouMeanKey(key));
  throw Refusal(why + "; nothing was written");
}

std::string Before(const Settings& settings, const CString& key, const ParameterFile& file) {
  const Setting* const setting = settings.Find(key);
  if (setting == nullptr || (!setting->stored && !setting->built_in))
    return file.defaults.empty() ? "new" : "new, and without a default" + settings.DidYouMeanKey(key);
  return "before: " + ToUtf8(setting->value) + (setting->stored ? "" : ", built in");
}

// The value that applies once the first line of the key is gone; empty when no other line has one.
CString NextValue(const TextLines& lines, const CString& key) {
  for (const StoredSetting& setting : ReadStoredSettings(false, lines).settings)
    if (!setting.first && setting.key.CompareNoCase(key) == 0 && !setting.value.IsEmpty())
      return setting.value;
  return {};
}

std::string FilledLines(const std::vector<int>& filled) {
  std::string numbers;
  for (const int number : filled) numbers += (numbers.empty() ? "" : ", ") + std::to_string(number);
  return numbers.empty()
             ? ""
             : "The built-in values were written to the lines that were missing: " + numbers + "\n";
}

}  // namespace

void SettingsSet(const SettingsOptions& options) {
  const ParameterFile file = ParameterFileNamed(FromUtf8(options.file.empty() ? kUsualFile : options.file));
  const CString value = FromUtf8(options.value);
  CString key = FromUtf8(options.key);
  RequireReadable(file, key, value);
  // Writing finds the rig's keys by their exact letters only.
  if (file.rig) key.MakeUpper();

  SettingsContext context(options.project);
  const SettingsPlace place = context.RequirePlace(file.name);
  const std::string path = PathForDisplay(place.path);
  const TextLines lines = TextLinesOf(place.path);
  const Settings settings(file, lines);
  const Setting* before = settings.Find(key);
  const bool stored = before != nullptr && before->stored;
  OutputFile output;
  if (stored ? before->value == value : value.IsEmpty()) {
    output.Write(path +
                 (value.IsEmpty() ? " has no " + Printable(ToUtf8(key))
                                  : " has " + Printable(ToUtf8(key + L"=" + value)) + " already") +
                 "\n");
    output.Finish();
    return;
  }
  RequireCharacters(place.path, key + value);
  const std::string no_number = options.force ? "" : WhyNoNumber(file, key, value);
  if (!no_number.empty()) throw Refusal(no_number + "; nothing was written; write it anyway with --force");
  RefuseLosses(path, LossesOfWrite(file, lines, settings.FileFindings(), key), options.force);
  const std::string question = options.project.empty() ? "" : context.SharedQuestion(place);
  if (!question.empty()) Confirm(question, options.shared, "--shared");
  std::vector<int> filled;
  if (!WriteSetting(file, place.path, key, value, &filled)) RefuseUnwritten(place.path);
  const std::string name = Printable(ToUtf8(key));
  output.Write(
      (value.IsEmpty() ? name + " removed from " : name + "=" + Printable(ToUtf8(value)) + " written to ") +
      path + " (" + place.name + "; " + Printable(Before(settings, key, file)) + ")\n" + FilledLines(filled));
  const CString next = value.IsEmpty() ? NextValue(lines, key) : CString();
  if (!next.IsEmpty())
    output.Write(name + " is in the file once more and is now " + Printable(ToUtf8(next)) + "\n");
  output.Finish();
}

}  // namespace velmora::cli
