#include "cli/context/settings_context.h"

#include <algorithm>

#include "cli/context/project_folder.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"

namespace velmora::cli {

SettingsContext::SettingsContext(const std::string& project) : has_project_(!project.empty()) {
  if (has_project_) project_.SetPath(ExistingProjectFolder(project));
  FindEnvironment(kUsualSub, &environment_);
}

CTundrilInst SettingsContext::Facade() {
  CTundrilInst settings;
  settings.Init(Ini(), Project());
  return settings;
}

std::vector<Place> SettingsContext::PlacesOf(const CString& file) const {
  std::vector<Place> places;
  const auto add = [&](const char* name, const CString& folder) {
    if (folder.IsEmpty()) return;
    const CString path = JoinPath(folder, file);
    const bool again = std::any_of(places.begin(), places.end(),
                                   [&](const Place& place) { return place.path.CompareNoCase(path) == 0; });
    if (!again) places.push_back({name, path, FileOrFolderExists(path)});
  };
  const CTundrilIni& ini = environment_.ini;
  if (file.CompareNoCase(CProjPath::TundrilCfgNamn) == 0) {
    CString folder;
    SplitPath(ini.m_iniPath, &folder, nullptr);
    add("beside Velmora.ini", folder);
    return places;
  }
  if (has_project_) add("project copy", project_.m_ProjKat);
  add("configuration folder", ini.m_cfgDir);
  add("program folder", ini.m_programDir);
  return places;
}

Place SettingsContext::RequirePlace(const CString& file) const {
  const std::vector<Place> places = PlacesOf(file);
  if (const Place* place = PlaceInUse(places)) return *place;
  const std::string name = ToUtf8(file);
  const std::string install = "make one: velmora env install --to DIR";
  if (file.CompareNoCase(CProjPath::TundrilCfgNamn) == 0)
    throw Refusal("no " + name +
                  (HasInstallation() ? " in the installation; bring it: velmora env sync"
                                     : ", as no installation was found; " + install));
  const bool stones = file.CompareNoCase(CProjPath::StenParNamn) == 0;
  const std::string own =
      std::string(", or make a project its own: velmora settings local create --project DIR") +
      (stones ? " --stones" : "");
  if (!HasInstallation())
    throw Refusal("no " + name + (has_project_ ? " in the project, and" : ", as") +
                  " no installation was found; " + install + own);
  throw Refusal("no " + name +
                (has_project_ ? " in the project or the installation" : " in the installation") +
                "; bring it: velmora env sync" + own);
}

const Place* PlaceInUse(const std::vector<Place>& places) {
  const auto found =
      std::find_if(places.begin(), places.end(), [](const Place& place) { return place.exists; });
  return found == places.end() ? nullptr : &*found;
}

}  // namespace velmora::cli
