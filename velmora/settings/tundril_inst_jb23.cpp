// JB23.PAR, a value at a time on disk.
#include "velmora/common/paths.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/platform/text_file.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/settings_file.h"
#include "velmora/settings/settings_messages.h"
#include "velmora/settings/settings_reader.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora {
namespace {

constexpr wchar_t kUsualSinkingStep[] = L"50";

Jb23Line With(Jb23Line line, const Jb23Place& place, const CString& value) {
  (place.step ? line.step : line.scale) = value;
  return line;
}

// Copies the file with the value at its place. False when it cannot be read to its end.
bool CopyWithValue(SettingsReader* reader, TextWriter* writer, const Jb23Place& place, const CString& value) {
  int number = 0;
  for (CString line; reader->ReadLine(&line, SettingsReader::Zeros::kKeep);) {
    const bool here = ++number == place.line;
    writer->Write(
        (here ? FormatJb23Line(With(ParseJb23Line(line.GetView()), place, value)) : line + L'\n').GetView());
  }
  if (number < place.line) writer->Write(FormatJb23Line(With({L"0", L"0"}, place, value)).GetView());
  return !reader->Failed();
}

}  // namespace

CString CTundrilInst::Jb23ReadKey(const CString& key) {
  const Jb23Place place = PlaceOfJb23Key(key.GetView());
  const CString path = FirstExisting(SettingsFilePaths(ini_, project_, CProjPath::Jb23ParNamn));
  if (path.IsEmpty()) return {};
  SettingsReader reader;
  if (!reader.Open(path)) {
    TellUnreadable(path, L"Läsning av Tundril - jb2/3 inställningar");
    return {};
  }
  CString line;
  for (int number = 1; number <= place.line; ++number)
    if (!reader.ReadLine(&line)) return {};
  const Jb23Line values = ParseJb23Line(line.GetView());
  return place.step ? values.step : values.scale;
}

CString CTundrilInst::Jb23WriteKey(const CString& key, const CString& value) {
  const Jb23Place place = PlaceOfJb23Key(key.GetView());
  CString path = FirstExisting(SettingsFilePaths(ini_, project_, CProjPath::Jb23ParNamn));
  if (path.IsEmpty() && ini_ != nullptr && !ini_->m_cfgDir.IsEmpty())
    path = JoinPath(ini_->m_cfgDir, CProjPath::Jb23ParNamn);

  TextWriter writer;
  if (path.IsEmpty() || !writer.Begin(path, TemporaryPathFor(path))) return value;
  // Now it is our turn with the file: what is read stays true until it is replaced. One that is there and
  // cannot be read is left alone.
  SettingsReader reader;
  const bool exists = FileOrFolderExists(path);
  if (exists && !reader.Open(path)) return value;
  if (exists) {
    if (!CopyWithValue(&reader, &writer, place, value)) return value;
  } else {
    if (place.line != 1 || place.step) return value;
    writer.Write(FormatJb23Line({value, kUsualSinkingStep}).GetView());
  }
  reader = SettingsReader();  // the file it reads is about to be replaced
  (void)writer.Commit();
  return value;
}

}  // namespace velmora
