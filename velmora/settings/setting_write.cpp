#include "velmora/settings/setting_write.h"

#include "velmora/platform/files.h"
#include "velmora/platform/text_file.h"
#include "velmora/settings/key_value_format.h"
#include "velmora/settings/key_value_list.h"
#include "velmora/settings/settings_file.h"
#include "velmora/settings/settings_reader.h"
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

constexpr wchar_t kZeroValues[] = L"0 0";
constexpr wchar_t kFirstLineValues[] = L"0 50";  // of a file that is made: the usual sinking step

Jb23Line BuiltInLine(int number) {
  Jb23Line line = ParseJb23Line(number, {});
  for (auto& [key, value] : line) value = DefaultValue(Jb23Defaults(), key);
  return line;
}

// A line without values: empty, or the placeholder that a project's copy is made with.
bool IsVacant(int number, std::wstring_view line) {
  return (number == 1 && IsStarLine(line)) || TrimBlanks(line).empty();
}

// Copies the file as WriteJb23Value says. False when it cannot be read to its end.
bool CopyWithValue(SettingsReader* reader, TextWriter* writer, const Jb23Field& field, const CString& value,
                   std::vector<int>* filled) {
  const auto write = [&](Jb23Line line, bool here) {
    if (here) line[field.step].value = value;
    writer->Write(FormatJb23Line(line).GetView());
  };
  int number = 0;
  for (CString line; reader->ReadLine(&line, SettingsReader::Zeros::kKeep);) {
    const bool here = ++number == field.line;
    const std::wstring_view text = line.GetView().substr(0, line.GetView().find(L'\0'));
    const bool fills = filled != nullptr && number <= field.line && IsVacant(number, text);
    if (fills) filled->push_back(number);
    if (here || fills)
      write(fills ? BuiltInLine(number) : ParseJb23Line(number, text), here);
    else
      writer->Write((line + L'\n').GetView());
  }
  if (filled == nullptr && number < field.line) write(ParseJb23Line(++number, kZeroValues), true);
  while (filled != nullptr && number < field.line) {
    filled->push_back(++number);
    write(BuiltInLine(number), number == field.line);
  }
  return !reader->Failed();
}

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

bool WriteJb23Value(const CString& path, const Jb23Field& field, const CString& value,
                    std::vector<int>* filled) {
  TextWriter writer;
  if (path.IsEmpty() || !writer.Begin(path, TemporaryPathFor(path))) return false;
  // Begin() holds the lock: nobody else replaces the file before Commit(). A file that cannot be read is left
  // alone.
  SettingsReader reader;
  if (FileOrFolderExists(path)) {
    if (!reader.Open(path) || !CopyWithValue(&reader, &writer, field, value, filled)) return false;
  } else {
    if (field.line != 1 || field.step) return false;
    Jb23Line line = ParseJb23Line(field.line, kFirstLineValues);
    line[field.step].value = value;
    writer.Write(FormatJb23Line(line).GetView());
  }
  return writer.Commit();
}

bool WriteSetting(const ParameterFile& file, const CString& path, const CString& key, const CString& value,
                  std::vector<int>* filled) {
  if (file.rig) return WriteJb23Value(path, RigField(key), value, filled);
  return SettingsList().Write(path, key, value);
}

}  // namespace velmora
