#include "cli/context/project_folder.h"

#include "cli/terminal/absolute_path.h"
#include "cli/terminal/error.h"
#include "velmora/platform/files.h"
#include "velmora/platform/whole_file.h"

namespace velmora::cli {

CString ProjectFolder(const std::string& given) {
  if (given.empty()) throw Refusal("the project needs the name of a folder");
  CString folder = PathFromSystem(AbsolutePath(given));
  while (folder.GetLength() > 1 && folder.GetAt(folder.GetLength() - 1) == L'\\')
    folder = folder.Left(folder.GetLength() - 1);
  return folder;
}

CString ExistingProjectFolder(const std::string& given) {
  const CString folder = ProjectFolder(given);
  const std::optional<FileStatus> status = GetFileStatus(folder);
  if (!status)
    throw Refusal(At(
        given, WhyNotFound(folder, "no such folder; make the project with: velmora project new " + given)));
  if (status->kind != FileKind::kFolder) throw Refusal(At(given, "is a file, and a project is a folder"));
  return folder;
}

}  // namespace velmora::cli
