#include "velmora/settings/tundril_cfg.h"

#include "velmora/common/paths.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/settings_file.h"

namespace velmora {

CTundrilCFG::CTundrilCFG(CTundrilIni* ini) {
  const CString ini_path = ini == nullptr ? CString() : ini->m_iniPath;
  const CString folder = ini_path.Left(ini_path.ReverseFind(L'\\'));
  Init(L"Tundril", JoinPath(folder, CProjPath::TundrilCfgNamn));
}

CTundrilCFG::CTundrilCFG(const wchar_t* program, const wchar_t* path) { Init(program, path); }

int CTundrilCFG::Init(const wchar_t* program, const wchar_t* path) {
  path_ = path;
  if (path_.IsEmpty() || !FileOrFolderExists(path_)) return 0;
  unreadable_ = !ReadFrom(path_);
  if (unreadable_) {
    CString caption;
    caption.Format(L"Läsning av %s - konfigurering", CString(program));
    ShowFileMessage(L"Kan inte öppna CFG-filen\n%s\nAvbryter läsning!", path_, caption);
  }
  return 0;
}

int CTundrilCFG::WriteKey(const CString& key, const CString& value) {
  if (PutKey(key, value) == Put::kRefused) return -1;
  if (path_.IsEmpty()) return 0;
  return !unreadable_ && WriteTo(path_) ? 0 : -1;
}

}  // namespace velmora
