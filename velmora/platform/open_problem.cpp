#include "velmora/platform/open_problem.h"

#include "velmora/platform/files.h"

namespace velmora {

std::string WhyUnopened(const CString& path) {
  const std::optional<FileStatus> status = GetFileStatus(path);
  if (!status) return "no such file; check the name";
  if (status->kind == FileKind::kFolder) return "is a folder; name a file in it";
  return "cannot be opened for reading; check its permissions";
}

}  // namespace velmora
