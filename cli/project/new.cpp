#include <chrono>
#include <filesystem>

#include "cli/context/environment.h"
#include "cli/context/project_folder.h"
#include "cli/project/commands.h"
#include "cli/terminal/absolute_path.h"
#include "cli/terminal/error.h"
#include "cli/terminal/questions.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"

namespace velmora::cli {
namespace {

// An ini file of one key, for a folder list that the user names instead of the installation's.
class FolderListIni {
 public:
  explicit FolderListIni(const std::string& list) {
    const CString path = PathFromSystem(AbsolutePath(list));
    if (!IsFile(path)) throw Refusal(At(list, "no such folder list"));
    std::string pattern =
        "velmora-" + std::to_string(std::filesystem::file_time_type::clock::now().time_since_epoch().count());
    const CString folder = PathFromSystem(std::filesystem::temp_directory_path().string());
    ini_.m_iniPath = folder + L"\\" + FromUtf8(pattern) + L".ini";
    ini_.m_useIniFile = 1;
    if (path.GetLength() > 254 || ini_.WriteKey(L"ARKIV", L"MAPPAR", path) == 0)
      throw Refusal(
          At(list, "the path is too long, or the system's temporary folder is full; copy it nearer"));
  }
  ~FolderListIni() { (void)RemoveWholeFile(ini_.m_iniPath); }
  FolderListIni(const FolderListIni&) = delete;
  FolderListIni& operator=(const FolderListIni&) = delete;
  CTundrilIni* Get() { return &ini_; }

 private:
  CTundrilIni ini_;
};

// The command's own question about an existing folder. The library refuses one with a database.
void ConfirmFolder(const CString& folder, const ProjectOptions& options) {
  const std::optional<FileStatus> status = GetFileStatus(folder);
  if (!status) return;
  if (status->kind != FileKind::kFolder)
    throw Refusal(At(options.folder, "is a file, and a project is a folder"));
  if (options.tundril && FileOrFolderExists(JoinPath(folder, CProjPath::TundrilDbsNamn))) return;
  Confirm(At(options.folder, "exists already; make the project's folders in it?"), options.yes);
}

}  // namespace

void ProjectNew(const ProjectOptions& options) {
  const CString folder = ProjectFolder(options.folder);
  ConfirmFolder(folder, options);
  const TerminalMessages messages(
      {folder, options.folder_list.empty() ? CString() : PathFromSystem(AbsolutePath(options.folder_list))});
  CProjPath project;
  const auto make = [&](CTundrilIni* ini) {
    return project.CreateProjectStructure(folder, ini, 1, 1, options.tundril ? 1 : 0, options.mirsen ? 1 : 0,
                                          options.karsk ? 1 : 0, options.harbel ? 1 : 0, 1);
  };
  int made = 0;
  if (!options.folder_list.empty()) {
    FolderListIni list(options.folder_list);
    made = make(list.Get());
  } else {
    Environment environment;
    FindEnvironment(kUsualSub, &environment);
    made = make(environment.HasIni() ? &environment.ini : nullptr);
  }
  if (made == 0)
    throw Refusal(At(options.folder,
                     "the project was not made, or not all of it; what stood there before is untouched"));
  OutputFile output;
  output.Write(PathForDisplay(folder) + "\n");
  output.Finish();
}

}  // namespace velmora::cli
