#include "cli/context/project_folder.h"
#include "cli/project/commands.h"
#include "velmora/platform/files.h"

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

}  // namespace

void ProjectPaths(const ProjectOptions& options) {
  CProjPath project;
  project.SetPath(ProjectFolder(options.folder));
  OutputFile output(options.output.file, {});
  RecordWriter records(output, options.output.Format(),
                       {{"field", "field"}, {"state", "there"}, {"path", "path"}});
  for (const NamedPath& named : kPaths) {
    const CString& path = project.*(named.path);
    const std::optional<FileStatus> status = GetFileStatus(path);
    const char* state = !status ? "-" : status->kind == FileKind::kFolder ? "folder" : "file";
    records.Row({std::string(named.field), std::string(state), PathForDisplay(path)});
  }
  records.Finish();
  output.Finish();
}

}  // namespace velmora::cli
