#include "cli/context/environment.h"

#include "cli/context/registry_error.h"
#include "cli/terminal/error.h"
#include "velmora/common/messages.h"
#include "velmora/common/paths.h"
#include "velmora/environment/installation.h"
#include "velmora/environment/system_keys.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/dialog.h"
#include "velmora/platform/files.h"
#include "velmora/platform/shell_folders.h"
#include "velmora/platform/whole_file.h"

namespace velmora::cli {
namespace {

constexpr int kNoUserIni = -2;  // of InitXPWay

CString UserIniPath(const CString& sub) {
  CString data = RegisteredUserData();
  if (data.IsEmpty()) data = UserApplicationData();
  return JoinPath(UserFolder(data, kRelease, sub), kIniName);
}

}  // namespace

bool Environment::HasIni() const { return !ini.m_iniPath.IsEmpty() && FileOrFolderExists(ini.m_iniPath); }

void FindEnvironment(const std::string& sub, Environment* environment) {
  RequireReadableRegistry();
  // The box for a registered installation whose user has no ini file is suppressed; the caller reports it.
  const MessageBoxHandler before =
      SetMessageBoxHandler([](const MessageBoxCall& call) { return DefaultButton(call.style); });
  const int result = environment->ini.InitXPWay(20, FromUtf8(sub), nullptr);
  SetMessageBoxHandler(before);
  if (result == 0) {
    environment->found_by = FoundBy::kRegistry;
    return;
  }
  environment->ini = CTundrilIni();
  if (result == kNoUserIni) environment->missing_ini = UserIniPath(FromUtf8(sub));
  CString folder;
  environment->ini.Init(1);
  environment->found_by = ReadEnvironment(L"TUNDRIL", &folder) ? FoundBy::kVariable : FoundBy::kNothing;
}

CString WantedIni(const Environment& environment) {
  if (environment.found_by == FoundBy::kVariable) return JoinPath(environment.ini.m_programDir, kIniName);
  return environment.missing_ini;
}

IniState StateOfIni(const Environment& environment) {
  if (environment.HasIni()) return IniState::kUsable;
  if (WhyNoStatus(WantedIni(environment)) == NoStatus::kNoPermission) return IniState::kNoPermission;
  if (environment.found_by == FoundBy::kVariable) return IniState::kNotAtVariable;
  if (environment.missing_ini.IsEmpty()) return IniState::kNoInstallation;
  return FileOrFolderExists(environment.missing_ini) ? IniState::kUnreadable : IniState::kMissing;
}

void RequireIni(const Environment& environment) {
  const std::string path = PathForDisplay(environment.missing_ini);
  switch (StateOfIni(environment)) {
    case IniState::kUsable:
      return;
    case IniState::kNotAtVariable:
      throw Refusal(At(PathForDisplay(environment.ini.m_programDir),
                       "has no Velmora.ini; point TUNDRIL at an installation, or make one: velmora env "
                       "install --to DIR"));
    case IniState::kUnreadable:
      throw Refusal(At(path, "is not a readable file; replace it with the user's ini file"));
    case IniState::kNoPermission:
      throw Refusal(At(PathForDisplay(WantedIni(environment)), WhyNotFound(WantedIni(environment), "")));
    case IniState::kMissing:
      throw Refusal(At(path,
                       "the current user has no such file; make it: velmora env install --to DIR, where "
                       "the installation is"));
    case IniState::kNoInstallation:
      throw Refusal("no installation found; make one: velmora env install --to DIR");
  }
}

std::vector<std::string> IniSections() { return {"SYSTEM", "ARKIV"}; }

std::vector<std::string> IniKeys(const std::string& section) {
  const CString name = FromUtf8(section);
  if (name.CompareNoCase(L"ARKIV") == 0) return {"MAPPAR"};
  std::vector<std::string> keys;
  if (name.CompareNoCase(L"SYSTEM") == 0)
    for (const CString& key : SystemKeyNames()) keys.push_back(ToUtf8(key));
  return keys;
}

}  // namespace velmora::cli
