// CTundrilIni: the set-up of an installed suite.
#include <algorithm>
#include <functional>
#include <vector>

#include "velmora/common/messages.h"
#include "velmora/common/paths.h"
#include "velmora/environment/installation.h"
#include "velmora/environment/running_program.h"
#include "velmora/environment/system_keys.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/files.h"
#include "velmora/platform/process.h"
#include "velmora/platform/shell_folders.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr int kInstalledMode = 20;

constexpr int kNoInstallation = -1;
constexpr int kNoUserData = -2;
constexpr int kNoUserFolder = -4;
constexpr int kNoMakerFolder = -6;
constexpr int kNoUserDataQuiet = -2020;

// The user's ini file of the process. Callers rely on the set-up of an unregistered program using the path
// that an earlier set-up composed, even a failed one.
CString& UserIniPath() {
  static CString path;
  return path;
}

CString UserDataFolder() {
  const CString registered = RegisteredUserData();
  return registered.IsEmpty() ? UserApplicationData() : registered;
}

bool MakeFolderIfMissing(const CString& folder) {
  // Checked again, because another program may create the same folder at this moment.
  return IsFolder(folder) || MakeFolder(folder) || IsFolder(folder);
}

void Show(const wchar_t* text, const CString& path) {
  CString message;
  message.Format(text, path);
  ShowMessage(message);
}

// Creates the missing levels of the user folder. Returns 0 or the result of the set-up.
int MakeUserFolder(const CString& data_folder, const CString& sub) {
  CString folder = JoinPath(data_folder, L"Quorval");
  if (!MakeFolderIfMissing(folder)) {
    Show(L"Kunde inte skapa applikationens huvudkatalog:\n%s", folder);
    return kNoMakerFolder;
  }
  bool made = false;
  for (const CString& level : {CString(L"Zennik"), CString(L"Velmora"), CString(kRelease), sub}) {
    folder = JoinPath(folder, level);
    made = MakeFolderIfMissing(folder);
  }
  if (made) return 0;
  Show(L"Kunde inte skapa lokala kataloger:\n%s", folder);
  return kNoUserFolder;
}

void CopyOrShow(const CString& from_folder, const CString& to_folder, const CString& name) {
  const CString from = JoinPath(from_folder, name);
  const CString to = JoinPath(to_folder, name);
  if (CopyWholeFile(from, to, /*keep_existing=*/false)) return;
  CString message;
  message.Format(L"Kunde inte kopiera filen:\n%s\ntill:\n%s", from, to);
  ShowMessage(message);
}

// Copies the ini file last: its presence tells the next set-up that everything was copied, even when this
// process is killed.
void CopyUserData(const CString& from_folder, const CString& to_folder) {
  const auto is_ini = [](const CString& name) { return EqualNoCase(name.GetView(), kIniName); };
  std::vector<CString> names = FilesIn(from_folder);
  std::stable_partition(names.begin(), names.end(), std::not_fn(is_ini));
  for (const CString& name : names) CopyOrShow(from_folder, to_folder, name);
}

// Copies a user's data from the folder under the maker's former name when there is none under the present
// one. Returns 0 or the result of the set-up.
int CopyFormerData(const CString& ini_path, const CString& data_folder, const CString& sub) {
  if (IsFile(ini_path)) return 0;
  const CString former = FormerMakerPath(ini_path);
  if (former.IsEmpty() || !IsFile(former)) return 0;
  // The ini path of an earlier call may be in another folder, whose data are not this user's.
  const CString folder = UserFolder(data_folder, kRelease, sub);
  if (!EqualNoCase(ini_path.GetView(), JoinPath(folder, kIniName).GetView())) return 0;
  if (const int failed = MakeUserFolder(data_folder, sub)) return failed;
  CString former_folder;
  SplitPath(former, &former_folder, nullptr);
  CopyUserData(former_folder, folder);
  return 0;
}

}  // namespace

int CTundrilIni::InitXPWay(int mode, const wchar_t* sub, const wchar_t* dir) {
  const CString sub_name = sub;  // copies: the arguments may point into this object
  const CString given_folder = dir;
  m_useIniFile = mode >= 2 ? 1 : 0;
  CopyToField(m_package, L"");
  if (mode >= 2) {
    const auto folder = mode == kInstalledMode ? FirstInstallationFolder(sub_name) : std::nullopt;
    if (!folder) return kNoInstallation;
    m_programDir = *folder;
  } else {
    m_programDir =
        dir != nullptr ? given_folder : ProgramFolderFromCommandLine(CommandLine(), /*parent=*/mode == 1);
    if (const auto package = PackageInstalledIn(m_programDir, sub_name)) {
      CopyToField(m_package, package->GetView());
      mode = kInstalledMode;  // m_useIniFile keeps its value
    }
  }

  const CString data_folder = UserDataFolder();
  CString& ini_path = UserIniPath();
  if (mode == kInstalledMode) {
    m_cfgDir = UserFolder(data_folder, kRelease, sub_name);
    ini_path = JoinPath(m_cfgDir, kIniName);
  }
  if (const int failed = CopyFormerData(ini_path, data_folder, sub_name)) return failed;
  if (!IsFile(ini_path)) {
    if (mode < 1) return kNoUserDataQuiet;
    ShowMessage(L"Fel! Hittar inte data för Velmora för aktuell användare. Starta upp via Lindqvar!");
    return kNoUserData;
  }

  m_iniPath = ini_path;
  if (mode < 1)
    m_useIniFile = 1;
  else
    ReplaceApplicationProfile(ini_path);
  ReadSystemKeys(SystemKeySet::kSetUp, this);
  return 0;
}

}  // namespace velmora
