// CProjPath: creating a project's folders.
#include <algorithm>
#include <string_view>
#include <vector>

#include "velmora/common/folder_levels.h"
#include "velmora/common/last_message.h"
#include "velmora/common/messages.h"
#include "velmora/common/paths.h"
#include "velmora/common/string_table.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/project/folder_list.h"
#include "velmora/project/proj_path.h"

namespace velmora {
namespace {

constexpr unsigned kDatabaseExistsText = 6039;
constexpr unsigned kFolderExistsText = 6040;
constexpr int kMostRefusedShown = 64;  // each in a box; the others are counted in one

void ShowFolderNotCreated(const CString& folder) {
  ShowMessage(FormatForUser(L"Fel, kan EJ skapa katalog:\n%s", folder));
}

void ShowFileNotCreated(const CString& file) {
  ShowMessage(FormatForUser(L"Fel, kan EJ skapa fil:\n%s", file));
}

void ShowLineRefused(const CString& list, const ListedFolder& folder) {
  ShowMessage(FormatForUser(L"Otillåten katalog i listan %s, rad %ld:\n%s", list, folder.line, folder.name));
}

void ShowDatabaseExists(const CString& project, bool show) {
  const CString text = LoadText(LibraryModule(), kDatabaseExistsText);
  FormatForUser(text, project);
  // Required: the box shows the unformatted text, with its "%s" (test
  // ADatabaseRefusesWithTheUnformattedText).
  if (show) ShowMessage(text);
}

bool ConfirmExistingFolder(const CString& project) {
  const CString question = FormatForUser(LoadText(LibraryModule(), kFolderExistsText), project);
  return ShowMessage(question, MB_YESNO | MB_DEFBUTTON2 | MB_ICONEXCLAMATION) == IDYES;
}

bool MakeLevelsOrShow(const CString& path) {
  const std::optional<CString> failed = MakeFolderLevels(path);
  if (failed) ShowFolderNotCreated(*failed);
  return !failed;
}

enum class Decision { kStop, kUseFolder, kMakeFolder };

Decision DecideOnFolder(const CString& project, bool show_messages, bool with_database) {
  const bool exists = FileOrFolderExists(project);
  if (with_database && exists && FileOrFolderExists(JoinPath(project, CProjPath::TundrilDbsNamn))) {
    ShowDatabaseExists(project, show_messages);
    return Decision::kStop;
  }
  if (!show_messages || !exists) return Decision::kMakeFolder;
  return ConfirmExistingFolder(project) ? Decision::kUseFolder : Decision::kStop;
}

bool MakeMarkerFile(const CString& folder) {
  const CString marker = JoinPath(folder, L"Harbel.krd");
  if (FileOrFolderExists(marker) || ReplaceFileContent(marker, "***")) return true;
  ShowFileNotCreated(marker);
  return false;
}

// The file named in the ini file; empty when there is no such regular file.
CString FolderListFile(CTundrilIni& ini) {
  CString file = ini.ReadKey(L"ARKIV", L"MAPPAR");
  if (!IsFile(file)) return {};
  return file.Trim();
}

// Reports and skips the lines that lead out of the project, and the line from which the list is not read.
bool MakeListedFolders(const CString& project, const CString& file) {
  if (file.IsEmpty()) return true;
  const FolderList list = ReadFolderList(file);
  int refused = 0;
  for (const ListedFolder& folder : list.folders) {
    if (folder.allowed) {
      if (!MakeLevelsOrShow(JoinPath(project, folder.name))) return false;
    } else if (++refused <= kMostRefusedShown) {
      ShowLineRefused(file, folder);
    }
  }
  if (list.unread) ShowLineRefused(file, *list.unread);
  if (refused > kMostRefusedShown)
    ShowMessage(FormatForUser(L"Otillåtna kataloger i listan %s: ytterligare %d st", file,
                              refused - kMostRefusedShown));
  return true;
}

}  // namespace

int CProjPath::CreateFolder(const CString& path, int showMessages) {
  if (HasOrMakesFolder(path)) return 1;
  const CString text = FormatForUser(L"Fel, kan EJ skapa katalog:\n%s", path);
  if (showMessages != 0) ShowMessage(text);
  return 0;
}

int CProjPath::CreateProjectStructure(const wchar_t* path, CTundrilIni* ini, int createProject,
                                      int showMessages, int withTundril, int withMirsen, int withKarsk,
                                      int withHarbel, int withFolderList) {
  const CString project = path;
  if (createProject != 0) {
    const Decision decision = DecideOnFolder(project, showMessages != 0, withTundril != 0);
    if (decision == Decision::kStop) return 0;
    if (decision == Decision::kMakeFolder && !MakeLevelsOrShow(project)) return 0;
  }

  std::vector<const wchar_t*> folders;
  if (withTundril != 0) folders.insert(folders.end(), {TundrilDbfKat, TundrilRitKat, StackKat});
  if (withMirsen != 0) folders.insert(folders.end(), {PostDbfKat, StabRitKat, PostRitKat});
  if (withKarsk != 0) folders.insert(folders.end(), {StenDbfKat, StenRitKat, StackKat});
  if (withHarbel != 0) folders.insert(folders.end(), {HarbelDbfKat, HarbelRitKat});
  for (const wchar_t* folder : folders)
    if (CreateFolder(JoinPath(project, folder), showMessages) == 0) return 0;
  if (withHarbel != 0 && !MakeMarkerFile(JoinPath(project, HarbelDbfKat))) return 0;

  if ((createProject == 0 && withFolderList == 0) || ini == nullptr) return 1;
  return MakeListedFolders(project, FolderListFile(*ini)) ? 1 : 0;
}

int CProjPath::CreateProjectStructure(const wchar_t* path, int createProject, int showMessages,
                                      int withTundril, int withMirsen, int withKarsk, int withHarbel,
                                      int withFolderList) {
  if (createProject == 0 && withFolderList == 0)
    return CreateProjectStructure(path, nullptr, createProject, showMessages, withTundril, withMirsen,
                                  withKarsk, withHarbel, withFolderList);
  CTundrilIni ini;
  if (ini.InitXPWay(0, L"sv", nullptr) < 0) ini.Init();
  return CreateProjectStructure(path, &ini, createProject, showMessages, withTundril, withMirsen, withKarsk,
                                withHarbel, withFolderList);
}

}  // namespace velmora
