#include "velmora/settings/settings_file.h"

#include "velmora/common/paths.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/project/proj_path.h"

namespace velmora {

bool HasFolder(const CProjPath* project) { return project != nullptr && !project->m_ProjKat.IsEmpty(); }

std::vector<CString> SettingsFilePaths(const CTundrilIni* ini, const CProjPath* project,
                                       const CString& name) {
  std::vector<CString> paths;
  if (HasFolder(project)) paths.push_back(JoinPath(project->m_ProjKat, name));
  if (ini == nullptr) return paths;
  for (const CString* folder : {&ini->m_cfgDir, &ini->m_programDir})
    if (!folder->IsEmpty()) paths.push_back(JoinPath(*folder, name));
  return paths;
}

CString FirstExisting(const std::vector<CString>& paths) {
  for (const CString& path : paths)
    if (FileOrFolderExists(path)) return path;
  return {};
}

CString TemporaryPathFor(const CString& path) {
  constexpr int kExtension = 4;
  return path.Left(path.GetLength() - kExtension) + L".tmp";
}

}  // namespace velmora
