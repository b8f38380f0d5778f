#include <utility>

#include "cli/context/losses.h"
#include "cli/context/settings_context.h"
#include "cli/context/settings_lines.h"
#include "cli/settings/commands.h"
#include "cli/terminal/error.h"
#include "cli/terminal/questions.h"
#include "velmora/platform/files.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/key_value_format.h"
#include "velmora/settings/tundril_cfg.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

void Refuse(const std::string& what) { throw Refusal(what + "; nothing was written"); }

std::string Characters(const CString& text) { return std::to_string(text.GetLength()) + " characters"; }

// The longest value that is read back; one character more could be written.
constexpr int kLongestValue = kValueRoom - 2;

// Refuses a setting that would not be read back as given.
void RequireReadable(const ParameterFile& file, const CString& key, const CString& value) {
  const auto has = [](const CString& text, const wchar_t* any) {
    return text.GetView().find_first_of(any) != std::wstring_view::npos;
  };
  if (has(key, L"\r\n") || has(value, L"\r\n")) Refuse("a key and a value must have no line ends");
  if (value.GetLength() > kLongestValue)
    Refuse("the value has " + Characters(value) + "; at most " + std::to_string(kLongestValue) + " are read");
  if (file.rig) {
    if (Settings(file, {}).Find(key) == nullptr)
      Refuse(Quoted(ToUtf8(key)) + " is not a key of " + ToUtf8(file.name) +
             "; to list them: velmora settings list --file " + ToUtf8(file.name));
    if (value.IsEmpty() || has(value, L" \t\v\f"))
      Refuse("a value of " + ToUtf8(file.name) + " is one word without blanks");
    return;
  }
  if (key.IsEmpty() || has(key, L"=")) Refuse("a key has one character or more and no \"=\"");
  if (key.GetLength() >= kKeyRoom)
    Refuse("the key has " + Characters(key) + "; at most " + std::to_string(kKeyRoom - 1) + " are read");
  if (TrimBlanks(key.GetView()).size() != key.GetView().size())
    Refuse("blanks at the ends of a key would be part of it, and no program uses such a key");
}

// Refuses what no program reads as the number, or as "MAX" of a scale, that the key has built in.
void RequireNumber(const ParameterFile& file, const CString& key, const CString& value) {
  const CString built_in = DefaultValue(file.defaults, key.GetView());
  if (value.IsEmpty() || !ParseWholeNumber(built_in.GetView()) || ParseWholeNumber(value.GetView())) return;
  const bool scale = CString(key).MakeUpper().Find(L"SKALA") >= 0;
  if (scale && value.CompareNoCase(L"MAX") == 0) return;
  throw Refusal(ToUtf8(key) + " is a number (built in: " + ToUtf8(built_in) + ")" + (scale ? " or MAX" : "") +
                ", not " + Quoted(ToUtf8(value)) + "; nothing was written; write it anyway with --force");
}

// False when it was not written. The rig's lines before the key's that the file lacks get their built-in
// values, as a value written to a short file would else go to the line after its last one.
bool Write(SettingsContext* context, const ParameterFile& file, const CString& path, const CString& key,
           const CString& value, std::vector<int>* filled) {
  if (file.rig) return WriteJb23Value(path, FieldOfJb23Key(key.GetView()), value, filled);
  if (file.name.CompareNoCase(CProjPath::TundrilCfgNamn) == 0)
    return CTundrilCFG(context->Ini()).WriteKey(key, value) == 0;
  return context->Facade().WriteKey(file.name, key, value) == 0;
}

std::string Before(const Setting* setting, const ParameterFile& file) {
  if (setting == nullptr || (!setting->stored && !setting->built_in))
    return file.defaults.empty() ? "new" : "new, and without a default";
  return "before: " + ToUtf8(setting->value) + (setting->stored ? "" : ", built in");
}

// The value that applies once the first line of the key is gone; empty when no other line has one.
CString NextValue(const TextLines& lines, const CString& key) {
  bool first = true;
  for (const StoredSetting& setting : ReadStoredSettings(false, lines).settings)
    if (setting.key.CompareNoCase(key) == 0 && !std::exchange(first, false) && !setting.value.IsEmpty())
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

// What a write of the key would lose. Of JB23.PAR only the key's own line is written anew; the others are
// copied. Elsewhere a line "key=" gets the value.
Findings LossesOfWrite(const ParameterFile& file, const TextLines& lines, const Settings& settings,
                       const CString& key) {
  Findings findings = settings.FileFindings();
  for (Finding& finding : findings)
    if (file.rig ? finding.line != FieldOfJb23Key(key.GetView()).line
                 : lines[static_cast<size_t>(finding.line) - 1].text.CompareNoCase(key + L"=") == 0)
      finding.lost = false;
  return findings;
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
  if (!options.force) RequireNumber(file, key, value);
  RefuseLosses(path, LossesOfWrite(file, lines, settings, key), options.force);
  const std::string question = options.project.empty() ? "" : context.SharedQuestion(place);
  if (!question.empty()) Confirm(question, options.shared, "--shared");
  std::vector<int> filled;
  if (!Write(&context, file, place.path, key, value, &filled)) RefuseUnwritten(place.path);
  const std::string name = Printable(ToUtf8(key));
  output.Write(
      (value.IsEmpty() ? name + " removed from " : name + "=" + Printable(ToUtf8(value)) + " written to ") +
      path + " (" + place.name + "; " + Printable(Before(before, file)) + ")\n" + FilledLines(filled));
  const CString next = value.IsEmpty() ? NextValue(lines, key) : CString();
  if (!next.IsEmpty())
    output.Write(name + " is in the file once more and is now " + Printable(ToUtf8(next)) + "\n");
  output.Finish();
}

}  // namespace velmora::cli
