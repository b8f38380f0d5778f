// JB23.PAR, a value at a time on disk.
#include "velmora/common/paths.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/platform/text_file.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/default_settings.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/settings_file.h"
#include "velmora/settings/settings_reader.h"
#include "velmora/settings/settings_text.h"
#include "velmora/settings/tundril_inst.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr wchar_t kUsualSinkingStep[] = L"50";

Jb23Line BuiltInLine(int number) {
  const Jb23Keys keys = Jb23KeysOfLine(number);
  return {DefaultValue(Jb23Defaults(), keys.scale), DefaultValue(Jb23Defaults(), keys.step)};
}

// A line without values: empty, or the placeholder that a project's copy is made with.
bool IsVacant(int number, std::wstring_view line) {
  return (number == 1 && IsStarLine(line)) || TrimBlanks(line).empty();
}

// Copies the file as WriteJb23Value says. False when it cannot be read to its end.
bool CopyWithValue(SettingsReader* reader, TextWriter* writer, const Jb23Field& field, const CString& value,
                   std::vector<int>* filled) {
  const auto write = [&](Jb23Line line, bool here) {
    if (here) (field.step ? line.step : line.scale) = value;
    writer->Write(FormatJb23Line(line).GetView());
  };
  int number = 0;
  for (CString line; reader->ReadLine(&line, SettingsReader::Zeros::kKeep);) {
    const bool here = ++number == field.line;
    const std::wstring_view text = line.GetView().substr(0, line.GetView().find(L'\0'));
    const bool fills = filled != nullptr && number <= field.line && IsVacant(number, text);
    if (fills) filled->push_back(number);
    if (here || fills)
      write(fills ? BuiltInLine(number) : ParseJb23Line(text), here);
    else
      writer->Write((line + L'\n').GetView());
  }
  if (filled == nullptr && number < field.line) write({L"0", L"0"}, true);
  while (filled != nullptr && number < field.line) {
    filled->push_back(++number);
    write(BuiltInLine(number), number == field.line);
  }
  return !reader->Failed();
}

}  // namespace

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
    writer.Write(FormatJb23Line({value, kUsualSinkingStep}).GetView());
  }
  return writer.Commit();
}

CString CTundrilInst::Jb23ReadKey(const CString& key) {
  const Jb23Field field = FieldOfJb23Key(key.GetView());
  const CString path = FindSettingsFile(ini_, project_, CProjPath::Jb23ParNamn);
  if (path.IsEmpty()) return {};
  SettingsReader reader;
  if (!reader.Open(path)) {
    ShowUnreadable(path, L"Läsning av Tundril - jb2/3 inställningar");
    return {};
  }
  CString line;
  for (int number = 1; number <= field.line; ++number)
    if (!reader.ReadLine(&line)) return {};
  const Jb23Line values = ParseJb23Line(line.GetView());
  return field.step ? values.step : values.scale;
}

CString CTundrilInst::Jb23WriteKey(const CString& key, const CString& value) {
  CString path = FindSettingsFile(ini_, project_, CProjPath::Jb23ParNamn);
  if (path.IsEmpty() && ini_ != nullptr && !ini_->m_cfgDir.IsEmpty())
    path = JoinPath(ini_->m_cfgDir, CProjPath::Jb23ParNamn);
  (void)WriteJb23Value(path, FieldOfJb23Key(key.GetView()), value);
  return value;
}

}  // namespace velmora
