// JB23.PAR, a value at a time on disk.
#include "velmora/common/paths.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/setting_write.h"
#include "velmora/settings/settings_file.h"
#include "velmora/settings/settings_reader.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora {

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
  return ParseJb23Line(field.line, line.GetView())[field.step].value;
}

CString CTundrilInst::Jb23WriteKey(const CString& key, const CString& value) {
  CString path = FindSettingsFile(ini_, project_, CProjPath::Jb23ParNamn);
  if (path.IsEmpty() && ini_ != nullptr && !ini_->m_cfgDir.IsEmpty())
    path = JoinPath(ini_->m_cfgDir, CProjPath::Jb23ParNamn);
  (void)WriteJb23Value(path, FieldOfJb23Key(key.GetView()), value);
  return value;
}

}  // namespace velmora
