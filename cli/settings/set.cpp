#include "cli/codes/check.h"
#include "cli/context/settings_context.h"
#include "cli/settings/commands.h"
#include "cli/settings/parameters.h"
#include "cli/settings/rig_lines.h"
#include "cli/terminal/error.h"
#include "velmora/platform/files.h"
#include "velmora/settings/key_value_format.h"
#include "velmora/settings/tundril_cfg.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

void Refuse(const std::string& what) { throw Refusal(what + "; nothing was written"); }

std::string Characters(const CString& text) { return std::to_string(text.GetLength()) + " characters"; }

// The longest value that is read back; one character more could be written.
constexpr int kLongestValue = kValueRoom - 2;

// A setting that would not be read back as it was given is refused.
void RequireReadable(const ParameterFile& file, const CString& key, const CString& value) {
  const auto has = [](const CString& text, const wchar_t* any) {
    return text.GetView().find_first_of(any) != std::wstring_view::npos;
  };
  if (has(key, L"\r\n") || has(value, L"\r\n")) Refuse("a key and a value have no line ends");
  if (value.GetLength() > kLongestValue)
    Refuse("the value has " + Characters(value) + ", and is read up to " + std::to_string(kLongestValue));
  if (file.rig) {
    if (Settings(file, CString()).Find(key) == nullptr)
      Refuse(Quoted(ToUtf8(key)) + " is no key of " + ToUtf8(file.name) + "; velmora settings list --file " +
             ToUtf8(file.name) + " lists them");
    if (value.IsEmpty() || has(value, L" \t\v\f"))
      Refuse("a value of " + ToUtf8(file.name) + " is one word without blanks");
    return;
  }
  if (key.IsEmpty() || has(key, L"=")) Refuse("a key has one character or more, and no \"=\" among them");
  if (key.GetLength() >= kKeyRoom)
    Refuse("the key has " + Characters(key) + ", and is read up to " + std::to_string(kKeyRoom - 1));
  if (TrimBlanks(key.GetView()).size() != key.GetView().size())
    Refuse("blanks at the ends of a key would belong to it, and no program asks for such a key");
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

// What the file says of the key, empty when nothing.
CString StoredValue(const ParameterFile& file, const CString& path, const CString& key) {
  const Settings settings(file, path);
  const Setting* setting = settings.Find(key);
  return setting != nullptr && setting->stored ? setting->value : CString();
}

}  // namespace

void SettingsSet(const SettingsOptions& options) {
  const ParameterFile file = ParameterFileNamed(FromUtf8(options.file.empty() ? kUsualFile : options.file));
  const CString value = FromUtf8(options.value);
  CString key = FromUtf8(options.key);
  RequireReadable(file, key, value);
  // The rig's keys are found by their exact letters only when they are written.
  if (file.rig) key.MakeUpper();

  SettingsContext context(options.project);
  const Place place = context.RequirePlace(file.name);
  const std::string path = PathForDisplay(place.path);
  const Settings settings(file, place.path);
  const Setting* before = settings.Find(key);
  const bool stored = before != nullptr && before->stored;
  OutputFile sink("");
  if (stored ? before->value == value : value.IsEmpty()) {
    sink.Write(path +
               (value.IsEmpty() ? " has no " + Printable(ToUtf8(key))
                                : " has " + Printable(ToUtf8(key + L"=" + value)) + " already") +
               "\n");
    sink.Finish();
    return;
  }
  RequireCharacters(place.path, key + value);
  const TextLines lines = TextLinesOf(place.path);
  LineFindings findings = CheckTextLines(KindByName(file.name), lines);
  if (file.rig) KeepFindingsOfWrite(key, lines, &findings);
  RefuseLosses(place.path, findings, options.force);
  std::string filled;
  if (file.rig) filled = FillRigLines(&context, place.path, key);
  Write(&context, file, key, value);
  if (StoredValue(file, place.path, key) != value) RefuseUnwritten(place.path);
  const std::string name = Printable(ToUtf8(key));
  sink.Write(
      (value.IsEmpty() ? name + " taken out of " : name + "=" + Printable(ToUtf8(value)) + " written to ") +
      path + " (" + place.name + "; " + Printable(Before(before, file)) + ")\n" + filled);
  sink.Finish();
}

}  // namespace velmora::cli
