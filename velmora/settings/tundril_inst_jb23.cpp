// JB23.PAR, a value at a time on disk.
#include "velmora/common/paths.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/platform/text_file.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/settings_file.h"
#include "velmora/settings/settings_reader.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora {
namespace {

constexpr wchar_t kUsualSinkingStep[] = L"50";

Jb23Line With(Jb23Line line, const Jb23Field& field, const CString& value) {
  (field.step ? line.step : line.scale) = value;
  return line;
}

// Copies the file with the value in its field. False when it cannot be read to its end.
bool CopyWithValue(SettingsReader* reader, TextWriter* writer, const Jb23Field& field, const CString& value) {
  int number = 0;
  for (CString line; reader->ReadLine(&line, SettingsReader::Zeros::kKeep);) {
    const bool here = ++number == field.line;
    writer->Write(
        (here ? FormatJb23Line(With(ParseJb23Line(line.GetView()), field, value)) : line + L'\n').GetView());
  }
  if (number < field.line) writer->Write(FormatJb23Line(With({L"0", L"0"}, field, value)).GetView());
  return !reader->Failed();
}

}  // namespace

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
  const Jb23Field field = FieldOfJb23Key(key.GetView());
  CString path = FindSettingsFile(ini_, project_, CProjPath::Jb23ParNamn);
  if (path.IsEmpty() && ini_ != nullptr && !ini_->m_cfgDir.IsEmpty())
    path = JoinPath(ini_->m_cfgDir, CProjPath::Jb23ParNamn);

  TextWriter writer;
  if (path.IsEmpty() || !writer.Begin(path, TemporaryPathFor(path))) return value;
  // Begin() holds the lock: nobody else replaces the file before Commit(). A file that cannot be read is left
  // alone.
  SettingsReader reader;
  const bool exists = FileOrFolderExists(path);
  if (exists && !reader.Open(path)) return value;
  if (exists) {
    if (!CopyWithValue(&reader, &writer, field, value)) return value;
  } else {
    if (field.line != 1 || field.step) return value;
    writer.Write(FormatJb23Line({value, kUsualSinkingStep}).GetView());
  }
  reader = SettingsReader();  // the file it reads is about to be replaced
  (void)writer.Commit();
  return value;
}

}  // namespace velmora
