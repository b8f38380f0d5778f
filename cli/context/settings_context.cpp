#include "cli/context/settings_context.h"

#include "cli/context/project_folder.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"

namespace velmora::cli {

std::vector<CString> SettingsNames() {
  return {CProjPath::TundrilCfgNamn, CProjPath::TundrilParNamn, CProjPath::StenParNamn,
          CProjPath::Jb23ParNamn,    CProjPath::Kodfil,         CProjPath::Miljkod,
          CProjPath::Linkod};
}

SettingsContext::SettingsContext(const std::string& project) : has_project_(!project.empty()) {
  if (has_project_) project_.SetPath(ExistingProjectFolder(project));
  FindEnvironment(kUsualSub, &environment_);
}

CTundrilInst SettingsContext::Facade() {
  CTundrilInst settings;
  settings.Init(Ini(), Project());
  return settings;
}

SettingsPlace SettingsContext::RequirePlace(const CString& file) const {
  const std::vector<SettingsPlace> places = PlacesOf(file);
  if (const SettingsPlace* place = PlaceInUse(places)) return *place;
  const std::string name = ToUtf8(file);
  const std::string install = "make one: velmora env install --to DIR";
  if (file.CompareNoCase(CProjPath::TundrilCfgNamn) == 0)
    throw Refusal("no " + name +
                  (HasInstallation() ? " in the installation; copy it: velmora env sync"
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
                "; copy it: velmora env sync" + own);
}

std::string SettingsContext::SharedQuestion(const SettingsPlace& place) const {
  if (place.of_project) return "";
  const CString name = NameOfPath(place.path);
  const std::string question =
      "change " + PathForDisplay(place.path) + ", which all projects without a copy of their own share?";
  if (!has_project_ || name.CompareNoCase(CProjPath::TundrilCfgNamn) == 0) return question;
  const std::string stones = name.CompareNoCase(CProjPath::StenParNamn) == 0 ? " --stones" : "";
  return At(PathForDisplay(project_.m_ProjKat), "has no " + ToUtf8(name) +
                                                    " of its own (velmora settings local create" + stones +
                                                    " makes one); " + question);
}

}  // namespace velmora::cli
