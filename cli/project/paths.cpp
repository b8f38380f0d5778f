#include "cli/context/project_folder.h"
#include "cli/project/commands.h"
#include "velmora/platform/files.h"
#include "velmora/project/named_paths.h"

namespace velmora::cli {
void ProjectPaths(const ProjectOptions& options) {
  CProjPath project;
  project.SetPath(ProjectFolder(options.folder));
  OutputFile output(options.output.file, {});
  RecordWriter records(output, options.output.Format(),
                       {{"field", "field"}, {"state", "there"}, {"path", "path"}});
  for (const NamedPath& named : kProjectPaths) {
    const CString& path = project.*(named.path);
    const std::optional<FileStatus> status = GetFileStatus(path);
    const char* state = !status ? "-" : status->kind == FileKind::kFolder ? "folder" : "file";
    records.Row({std::string(named.field), std::string(state), PathForDisplay(path)});
  }
  records.Finish();
  output.Finish();
}

}  // namespace velmora::cli
