#include <cstdio>
#include <filesystem>

#include "cli/absolute_path.h"
#include "cli/env/environment.h"
#include "cli/error.h"
#include "cli/project/commands.h"
#include "cli/project/project_folder.h"
#include "cli/questions.h"
#include "velmora/common/string_table.h"
#include "velmora/platform/files.h"
#include "velmora/project/dir_sort.h"
#include "velmora/project/projekt_status.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

struct NamedPath {
  const char* field;
  CString CProjPath::*path;
};

constexpr NamedPath kPaths[] = {
    {"m_ProjKat", &CProjPath::m_ProjKat},         {"m_ZipPath", &CProjPath::m_ZipPath},
    {"m_DbsPath", &CProjPath::m_DbsPath},         {"m_HarbelDbsPath", &CProjPath::m_HarbelDbsPath},
    {"m_TerrDbsPath", &CProjPath::m_TerrDbsPath}, {"m_StenDbsPath", &CProjPath::m_StenDbsPath},
    {"m_DbfKat", &CProjPath::m_DbfKat},           {"m_RitKat", &CProjPath::m_RitKat},
    {"m_StackKat", &CProjPath::m_StackKat},       {"m_PostDbfKat", &CProjPath::m_PostDbfKat},
    {"m_PostRitKat", &CProjPath::m_PostRitKat},   {"m_StabRitKat", &CProjPath::m_StabRitKat},
    {"m_UtvDbsPath", &CProjPath::m_UtvDbsPath},   {"m_AvpPath", &CProjPath::m_AvpPath},
    {"m_VlPath", &CProjPath::m_VlPath},           {"m_ParPath", &CProjPath::m_ParPath},
    {"m_StenParPath", &CProjPath::m_StenParPath}, {"m_PicturesKat", &CProjPath::m_PicturesKat},
};

// An ini file of one key, for a folder list that the user names instead of the installation's.
class FolderListIni {
 public:
  explicit FolderListIni(const std::string& list) {
    const CString path = PathFromSystem(AbsolutePath(list));
    const std::optional<FileStatus> status = GetFileStatus(path);
    if (!status || status->kind != FileKind::kFile) throw Refusal(At(list, "no such folder list"));
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

}  // namespace

void ProjectNew(const ProjectOptions& options) {
  const CString folder = ProjectFolder(options.folder);
  const TerminalMessages messages;
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
  Sink sink("");
  sink.Write(PathForDisplay(folder) + "\n");
  sink.Finish();
}

void ProjectPaths(const ProjectOptions& options) {
  CProjPath project;
  project.SetPath(ProjectFolder(options.folder));
  Sink sink(options.output.file);
  RecordWriter records(sink, options.output.Format(),
                       {{"field", "field"}, {"state", "there"}, {"path", "path"}});
  for (const NamedPath& named : kPaths) {
    const CString& path = project.*(named.path);
    const std::optional<FileStatus> status = GetFileStatus(path);
    const char* state = !status ? "-" : status->kind == FileKind::kFolder ? "folder" : "file";
    records.Row({std::string(named.field), std::string(state), PathForDisplay(path)});
  }
  records.Finish();
  sink.Finish();
}

void ProjectStatus(const ProjectOptions& options) {
  CProjektStatus states;
  states.SetHandle(LibraryModule());
  states.Load();
  std::vector<Cell> only;
  if (!options.status.empty()) {
    const CString text = FromUtf8(options.status);
    int number = 0;
    NumberScanner scanner(text.GetView());
    const bool is_number = scanner.Next(&number) && scanner.Rest().empty();
    if (!is_number) number = states.Find(text);
    states.SetStatus(number);
    const bool unknown = states.m_nStatus == CProjektStatus::kUnknown;
    if (unknown && number != CProjektStatus::kUnknown)
      throw Refusal(Quoted(options.status) + " is no project status; velmora project status lists them");
    if (unknown && !is_number && text.CompareNoCase(states.GetStatus()) != 0)
      throw Refusal(Quoted(options.status) + " is no project status; velmora project status lists them");
    only = {static_cast<std::int64_t>(number), ToUtf8(states.GetStatus())};
  }
  Sink sink(options.output.file);
  RecordWriter records(sink, options.output.Format(), {{"number", "number", true}, {"text", "text"}});
  if (!only.empty()) records.Row(only);
  for (int at = only.empty() ? states.Home() : -1; at == 0; at = states++ == nullptr ? -1 : 0)
    records.Row({static_cast<std::int64_t>(states.pael->nummer), ToUtf8(states.pael->text)});
  records.Finish();
  sink.Finish();
}

void ProjectList(const ProjectOptions& options) {
  const int key = options.sort == "size" ? 2 : options.sort == "date" ? 3 : 1;
  CDirSort list;
  if (list.Init(PathFromSystem(options.folder), key, 1, 0, options.folders ? 1 : 0) < 0)
    throw Refusal(At(options.folder, "too many files to list in memory"));
  if (list.Where() < 0)
    throw Refusal(At(options.folder, "nothing matches; check the folder and the wildcards"));
  Sink sink(options.output.file);
  RecordWriter records(sink, options.output.Format(),
                       {{"name", "name"}, {"size", "size", true}, {"date", "date"}, {"time", "time"}});
  // Falling is the rising order from its end: the library's own falling keys compare less.
  int at = options.falling ? list.End() : list.Home();
  while (at == 0) {
    const dirsorttype& entry = *list.pael;
    records.Row({ToUtf8(entry.namn), static_cast<std::int64_t>(entry.filstorlek), ToUtf8(entry.datum),
                 ToUtf8(entry.tid)});
    at = (options.falling ? list-- : list++) == nullptr ? -1 : 0;
  }
  records.Finish();
  sink.Finish();
}

}  // namespace velmora::cli
