#include "cli/context/environment.h"
#include "cli/context/registry_error.h"
#include "cli/env/commands.h"
#include "cli/terminal/error.h"
#include "cli/terminal/questions.h"
#include "velmora/environment/registry.h"
#include "velmora/environment/user_data.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/files.h"

namespace velmora::cli {
namespace {

constexpr wchar_t kMissing[] = L"Saknas";

std::string InstallPath(const wchar_t* branch, const std::string& sub) {
  CRegistry registry;
  registry.SetRootKey(HKEY_LOCAL_MACHINE);
  CString path;
  path.Format(L"SOFTWARE\\Wow6432Node\\Quorval\\Zennik\\Velmora\\%s\\%s", branch, FromUtf8(sub));
  if (registry.SetKey(path, 0, KEY_READ) == 0) return "";
  const CString folder = registry.ReadString(L"InstallPath", kMissing);
  return folder.CompareNoCase(kMissing) == 0 ? "" : PathForDisplay(folder);
}

std::string Outcome(int result) {
  switch (result) {
    case 0:
      return "set up";
    case -1:
      return "no installation is registered; create one: velmora env install --to DIR";
    case -4:
    case -6:
      return "the user's folders could not be created; check the permissions of the application-data folder";
    default:
      return "the current user has no Velmora.ini; create one: velmora env install --to DIR";
  }
}

std::string NoSharedFiles(const CString& folder) {
  return folder.IsEmpty()
             ? "no folder is registered for the data of all users (Common Appdata); nothing is shared"
             : At(PathForDisplay(folder), "no such folder; there are no shared files to copy");
}

}  // namespace

void EnvSetup(const EnvOptions& options) {
  RequireReadableRegistry();
  OutputFile output;
  const auto say = [&](const std::string& what, const std::string& how) {
    output.Write(what + std::string(what.size() < 22 ? 22 - what.size() : 1, ' ') + how + "\n");
  };
  bool taken = false;
  for (const wchar_t* branch : {L"DIST", L"RELEASE", L"R20"}) {
    const std::string folder = InstallPath(branch, options.sub);
    const std::string key = "Registry " + ToUtf8(branch) + "\\" + options.sub;
    say(key, folder.empty() ? "not registered"
                            : folder + (taken ? " (not used: an earlier one is registered)" : ""));
    taken = taken || !folder.empty();
  }
  CTundrilIni ini;
  const TerminalMessages messages;
  const int result = ini.InitXPWay(20, FromUtf8(options.sub), nullptr);
  if (result == 0) {
    say("Program folder", PathForDisplay(ini.m_programDir));
    say("User's ini file", PathForDisplay(ini.m_iniPath));
    const CString former = FormerMakerPath(ini.m_iniPath);
    if (!former.IsEmpty() && FileOrFolderExists(former))
      say("Former ini file", PathForDisplay(former) + " (copied when there was no newer one)");
    say("Configuration folder", PathForDisplay(ini.m_cfgDir));
  }
  if (result == 0) say("Result", Outcome(result));
  output.Finish();
  if (result != 0) throw Refusal("set-up " + std::to_string(result) + ": " + Outcome(result));
}

void EnvSync(const EnvOptions& options) {
  Environment environment;
  FindEnvironment(options.sub, &environment);
  RequireIni(environment);
  const UserFilePlan plan = PlanUserFileCheck(environment.ini);
  if (!plan.user_folder_exists)
    throw Refusal(At(PathForDisplay(plan.user_folder), "no such folder; nothing can be updated without it"));
  const bool is_shared = !plan.shared_folder.IsEmpty() && IsFolder(plan.shared_folder);
  if (!is_shared && plan.files.empty()) throw Refusal(NoSharedFiles(plan.shared_folder));
  std::vector<std::string> paths = {PathForDisplay(environment.ini.m_iniPath)};
  for (const UserFile& file : plan.files) {
    paths.push_back(PathForDisplay(file.source));
    paths.push_back(PathForDisplay(file.destination));
  }
  // Refuses before anything is copied.
  OutputFile output(options.output.file, paths);
  RecordWriter records(
      output, options.output.Format(),
      {{"file", "file"}, {"state", "state"}, {"done", "done"}, {"destination", "destination"}});
  UserFilePlan after;
  if (!options.dry_run) {
    environment.ini.AllUserFileCheck();
    after = PlanUserFileCheck(environment.ini);
  }
  const auto wanted = [](const UserFile& file) {
    return file.state == UserFileState::kMissing || file.state == UserFileState::kNewer;
  };
  const auto still_wanted = [&](const UserFile& file) {
    for (const UserFile& later : after.files)
      if (later.destination == file.destination) return wanted(later);
    return true;
  };
  bool failed = false;
  for (const UserFile& file : plan.files) {
    const char* state = file.state == UserFileState::kMissing      ? "missing"
                        : file.state == UserFileState::kNewer      ? "newer"
                        : file.state == UserFileState::kOwnIniFile ? "the user's own"
                        : file.state == UserFileState::kUnreadable ? "unreadable"
                                                                   : "up to date";
    std::string done = "left";
    if (wanted(file)) {
      const bool missed = !options.dry_run && still_wanted(file);
      done = options.dry_run ? "would be copied" : missed ? "could not be copied" : "copied";
      failed = failed || missed;
    }
    const CString name = file.source.Mid(file.source.ReverseFind(L'\\') + 1);
    records.Row({PathForDisplay(name), std::string(state), done, PathForDisplay(file.destination)});
  }
  records.Finish();
  output.Finish();
  if (!is_shared) throw Refusal(NoSharedFiles(plan.shared_folder));
  if (failed) throw Refusal("some files could not be copied; check permissions and disk space");
}

}  // namespace velmora::cli
