#include "velmora/settings/setting_write.h"

#include "velmora/platform/files.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/key_value_format.h"
#include "velmora/settings/key_value_list.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

// The longest value that is read back; one character more could be written.
constexpr int kLongestValue = kValueRoom - 2;

std::string Characters(const CString& text) { return std::to_string(text.GetLength()) + " characters"; }

struct Record {
  wchar_t nyckel[kKeyRoom];
  wchar_t varde[kValueRoom];
};

// Of a rig's key, letters without regard to case.
Jb23Field RigField(CString key) { return FieldOfJb23Key(key.MakeUpper().GetView()); }

class SettingsList : public KeyValueList<Record> {
 public:
  bool Write(const CString& path, const CString& key, const CString& value) {
    if (FileOrFolderExists(path) && !ReadFrom(path)) return false;
    return PutKey(key, value) != Put::kRefused && WriteTo(path);
  }
};

}  // namespace

std::string WhyUnreadable(const ParameterFile& file, const CString& key, const CString& value) {
  const auto has = [](const CString& text, const wchar_t* any) {
    return text.GetView().find_first_of(any) != std::wstring_view::npos;
  };
  if (has(key, L"\r\n") || has(value, L"\r\n")) return "a key and a value must have no line ends";
  if (value.GetLength() > kLongestValue)
    return "the value has " + Characters(value) + "; at most " + std::to_string(kLongestValue) + " are read";
  if (file.rig) {
    if (Settings(file, {}).Find(key) == nullptr)
      return Quoted(key.GetView()) + " is not a key of " + ToUtf8(file.name);
    return value.IsEmpty() || has(value, L" \t\v\f")
               ? "a value of " + ToUtf8(file.name) + " is one word without blanks"
               : "";
  }
  if (key.IsEmpty() || has(key, L"=")) return "a key has one character or more and no \"=\"";
  if (key.GetLength() >= kKeyRoom)
    return "the key has " + Characters(key) + "; at most " + std::to_string(kKeyRoom - 1) + " are read";
  if (TrimBlanks(key.GetView()).size() != key.GetView().size())
    return "blanks at the ends of a key would be part of it, and no program uses such a key";
  return {};
}

std::string WhyNoNumber(const ParameterFile& file, const CString& key, const CString& value) {
  const CString built_in = DefaultValue(file.defaults, key.GetView());
  if (value.IsEmpty() || !ParseWholeNumber(built_in.GetView()) || ParseWholeNumber(value.GetView()))
    return {};
  const bool scale = CString(key).MakeUpper().Find(L"SKALA") >= 0;
  if (scale && value.CompareNoCase(L"MAX") == 0) return {};
  return ToUtf8(key) + " is a number (built in: " + ToUtf8(built_in) + ")" + (scale ? " or MAX" : "") +
         ", not " + Quoted(value.GetView());
}

Findings LossesOfWrite(const ParameterFile& file, const TextLines& lines, const Findings& findings,
                       const CString& key) {
  Findings losses = findings;
  for (Finding& finding : losses)
    if (file.rig ? finding.line != RigField(key).line
                 : lines[static_cast<size_t>(finding.line) - 1].text.CompareNoCase(key + L"=") == 0)
      finding.lost = false;
  return losses;
}

bool WriteSetting(const ParameterFile& file, const CString& path, const CString& key, const CString& value,
                  std::vector<int>* filled) {
  if (file.rig) return WriteJb23Value(path, RigField(key), value, filled);
  return SettingsList().Write(path, key, value);
}

}  // namespace velmora
