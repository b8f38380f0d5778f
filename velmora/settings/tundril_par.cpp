#include "velmora/settings/tundril_par.h"

#include "velmora/platform/files.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/settings_file.h"

namespace velmora {

CTundrilPAR::CTundrilPAR(CTundrilIni* ini, CProjPath* proj) {
  Load(ini, proj == nullptr ? CString() : proj->m_ParPath, CProjPath::TundrilParNamn,
       L"Läsning av Tundril - inställningar");
}

CTundrilPAR::CTundrilPAR(CTundrilIni* ini, CProjPath* proj, int which) {
  if (which == 0) CTundrilPAR(ini, proj);
  if (which != 1) return;
  Load(ini, proj == nullptr ? CString() : proj->m_StenParPath, CProjPath::StenParNamn,
       L"Läsning av Karsk - inställningar");
}

void CTundrilPAR::Load(CTundrilIni* ini, const CString& project_copy, const CString& name,
                       const wchar_t* caption) {
  const bool own = !project_copy.IsEmpty() && FileOrFolderExists(project_copy);
  path_ = own ? project_copy : FindSettingsFile(ini, nullptr, name);
  unreadable_ = !path_.IsEmpty() && !ReadFrom(path_);
  if (unreadable_) ShowUnreadable(path_, caption);
}

int CTundrilPAR::WriteKey(const CString& key, const CString& value) {
  const Put put = PutKey(key, value);
  if (put == Put::kRefused) return -1;
  if (put == Put::kUnchanged || path_.IsEmpty()) return 0;
  if (!unreadable_ && WriteTo(path_)) return 0;
  ShowFileMessage(L"Could not open file for write\n%s", path_, L"Update Velmora Settings");
  return -1;
}

}  // namespace velmora
