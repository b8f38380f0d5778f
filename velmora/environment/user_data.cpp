#include "velmora/environment/user_data.h"

#include <algorithm>

#include "velmora/common/paths.h"
#include "velmora/environment/installation.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/files.h"
#include "velmora/platform/shell_folders.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr wchar_t kPlatformVersion[] = L"26.15";
constexpr const wchar_t* kSettingsExtensions[] = {L".PAR", L".KAL", L".CFG", L".DAT", L".XML", L".SDF"};

bool HasBothParts(const IniPathParts& parts) { return !parts.sub.IsEmpty() && !parts.release.IsEmpty(); }

// Empty when the registry or the ini path does not give it.
CString UserFolderOf(const CTundrilIni& ini) {
  const IniPathParts parts = SplitIniPath(ini.m_iniPath);
  CString data_folder = RegisteredUserData();
  if (data_folder.IsEmpty()) data_folder = UnregisteredUserData();
  if (data_folder.IsEmpty() || !HasBothParts(parts)) return {};
  return UserFolder(data_folder, parts.release, parts.sub);
}

CString SharedFolderOf(const CTundrilIni& ini) {
  const CString data_folder = RegisteredCommonData();
  return data_folder.IsEmpty() ? CString() : SharedFolder(data_folder, SplitIniPath(ini.m_iniPath).sub);
}

UserFileState CompareFiles(const CString& source, const CString& destination) {
  const auto ours = GetFileStatus(source);
  if (!ours) return UserFileState::kUnreadable;
  const auto theirs = GetFileStatus(destination);
  if (!theirs) return UserFileState::kMissing;
  // In whole seconds: on a disk without fractions of seconds every source would stay newer.
  constexpr std::int64_t kTicksPerSecond = 10'000'000;
  return ours->modified / kTicksPerSecond > theirs->modified / kTicksPerSecond ? UserFileState::kNewer
                                                                               : UserFileState::kUpToDate;
}

void PlanFolder(const CString& source_folder, const CString& destination_folder, bool copies_ini_file,
                std::vector<UserFile>* files) {
  for (const CString& name : FilesIn(source_folder)) {
    UserFile file{.source = JoinPath(source_folder, name), .destination = JoinPath(destination_folder, name)};
    file.state = !copies_ini_file && EqualNoCase(name.GetView(), kIniName)
                     ? UserFileState::kOwnIniFile
                     : CompareFiles(file.source, file.destination);
    files->push_back(std::move(file));
  }
}

void PlanBinaries(const CTundrilIni& ini, UserFilePlan* plan) {
  CString version = ini.ReadKey(L"SYSTEM", L"ZENNIKVER");
  if (version.IsEmpty()) version = kPlatformVersion;
  const CString platform = PlatformFolder(version);
  const CString programs = RegisteredProgramFiles();
  if (platform.IsEmpty() || programs.IsEmpty()) return;
  plan->binaries_source = JoinPath(programs, L"Quorval\\Binaries");
  plan->binaries_destination = JoinPath(platform, L"Binaries");
  PlanFolder(plan->binaries_source, plan->binaries_destination, /*copies_ini_file=*/true, &plan->files);
}

bool IsCopied(const UserFile& file) {
  return file.state == UserFileState::kMissing || file.state == UserFileState::kNewer;
}

bool HasSettingsExtension(const CString& name) {
  const CString extension = name.Right(4);
  return std::any_of(std::begin(kSettingsExtensions), std::end(kSettingsExtensions),
                     [&](const wchar_t* known) { return EqualNoCase(extension.GetView(), known); });
}

}  // namespace

UserFilePlan PlanUserFileCheck(const CTundrilIni& ini) {
  UserFilePlan plan;
  plan.user_folder = UserFolderOf(ini);
  plan.user_folder_exists = !plan.user_folder.IsEmpty() && IsFolder(plan.user_folder);
  if (!plan.user_folder_exists) return plan;
  plan.shared_folder = SharedFolderOf(ini);
  PlanFolder(plan.shared_folder, plan.user_folder, /*copies_ini_file=*/false, &plan.files);
  PlanBinaries(ini, &plan);
  return plan;
}

int CTundrilIni::AllUserFileCheck() {
  for (const UserFile& file : PlanUserFileCheck(*this).files)
    // A failed copy is repeated at the next check.
    if (IsCopied(file)) (void)CopyWholeFile(file.source, file.destination, /*keep_existing=*/false);
  return -1;
}

int CTundrilIni::User2Cfg(CString& folder) {
  const CString user_folder = UserFolderOf(*this);
  if (folder.IsEmpty()) folder = FormerMakerPath(user_folder);
  if (user_folder.IsEmpty() || folder.IsEmpty() || !IsFolder(user_folder) || !IsFolder(folder)) return -1;
  int copied = 0;
  for (const CString& name : FilesIn(folder))
    if (HasSettingsExtension(name) &&
        CopyWholeFile(JoinPath(folder, name), JoinPath(user_folder, name), /*keep_existing=*/true))
      ++copied;
  return copied;
}

}  // namespace velmora
