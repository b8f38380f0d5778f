#include <algorithm>

#include "cli/context/settings_context.h"
#include "cli/context/settings_lines.h"
#include "cli/settings/commands.h"
#include "cli/terminal/error.h"
#include "velmora/platform/files.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/key_value_format.h"
#include "velmora/settings/tundril_cfg.h"
#include "velmora/text/letters.h"

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

void Write(SettingsContext* context, const ParameterFile& file, const CString& key, const CString& value) {
  if (file.name.CompareNoCase(CProjPath::TundrilCfgNamn) == 0)
    CTundrilCFG(context->Ini()).WriteKey(key, value);
  else
    context->Facade().WriteKey(file.name, key, value);
}

std::string Before(const Setting* setting, const ParameterFile& file) {
  if (setting == nullptr || (!setting->stored && !setting->built_in))
    return file.defaults.empty() ? "new" : "new, and without a default";
  return "before: " + ToUtf8(setting->value) + (setting->stored ? "" : ", built in");
}

// The value in the file; empty without one.
CString StoredValue(const ParameterFile& file, const CString& path, const CString& key) {
  const Settings settings = SettingsIn(file, path);
  const Setting* setting = settings.Find(key);
  return setting != nullptr && setting->stored ? setting->value : CString();
}

// A line without values: empty, or the placeholder that a project's copy is made with.
bool IsVacant(const TextLine& line) {
  return (line.number == 1 && IsStarLine(line.text.GetView())) || TrimBlanks(line.text.GetView()).empty();
}

// JB23.PAR has its values by line number. Only the key's own line is written anew; the others are copied, up
// to a zero byte.
void KeepFindingsOfWrite(const CString& key, const TextLines& lines, Findings* findings) {
  const int own = FieldOfJb23Key(key.GetView()).line;
  for (Finding& finding : *findings)
    if (finding.line != own && !lines[static_cast<size_t>(finding.line) - 1].cut) finding.lost = false;
}

// Writes the built-in values to the lines up to the key's that the file lacks: a value written to a short
// file would else go to the line after its last one. Returns a line that reports it, empty when nothing was
// missing. Throws a Refusal when the file cannot be written.
std::string FillRigLines(SettingsContext* context, const CString& path, const CString& key) {
  const TextLines lines = TextLinesOf(path);
  const int own = FieldOfJb23Key(key.GetView()).line;
  std::vector<int> filled;
  for (int number = 1; number <= own; ++number) {
    const auto index = static_cast<size_t>(number) - 1;
    if (index < lines.size() && !IsVacant(lines[index])) continue;
    const Jb23Keys keys = Jb23KeysOfLine(number);
    CTundrilInst settings = context->Facade();
    for (const wchar_t* missing : {keys.scale, keys.step})
      settings.Jb23WriteKey(missing, DefaultValue(Jb23Defaults(), missing));
    filled.push_back(number);
  }
  if (filled.empty()) return "";
  const TextLines after = TextLinesOf(path);
  if (std::any_of(filled.begin(), filled.end(), [&](int number) {
        const auto index = static_cast<size_t>(number) - 1;
        return index >= after.size() || IsVacant(after[index]);
      }))
    RefuseUnwritten(path);
  std::string numbers;
  for (const int number : filled) numbers += (numbers.empty() ? "" : ", ") + std::to_string(number);
  return "The built-in values were written to the lines that were missing: " + numbers + "\n";
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
  const Settings settings = SettingsIn(file, place.path);
  const Setting* before = settings.Find(key);
  const bool stored = before != nullptr && before->stored;
  OutputFile output("");
  if (stored ? before->value == value : value.IsEmpty()) {
    output.Write(path +
                 (value.IsEmpty() ? " has no " + Printable(ToUtf8(key))
                                  : " has " + Printable(ToUtf8(key + L"=" + value)) + " already") +
                 "\n");
    output.Finish();
    return;
  }
  RequireCharacters(place.path, key + value);
  Findings findings = settings.FileFindings();
  if (file.rig) KeepFindingsOfWrite(key, TextLinesOf(place.path), &findings);
  RefuseLosses(place.path, findings, options.force);
  std::string filled;
  if (file.rig) filled = FillRigLines(&context, place.path, key);
  Write(&context, file, key, value);
  if (StoredValue(file, place.path, key) != value) RefuseUnwritten(place.path);
  const std::string name = Printable(ToUtf8(key));
  output.Write(
      (value.IsEmpty() ? name + " removed from " : name + "=" + Printable(ToUtf8(value)) + " written to ") +
      path + " (" + place.name + "; " + Printable(Before(before, file)) + ")\n" + filled);
  output.Finish();
}

}  // namespace velmora::cli
