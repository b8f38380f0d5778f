#include "velmora/platform/posix/folders.h"

#include <sys/stat.h>

#include <algorithm>

#include "velmora/platform/posix/disk_calls.h"

namespace velmora {

bool MakeFolders(const std::string& path) {
  for (size_t at = 0; at < path.size();) {
    at = std::min(path.find('/', at + 1), path.size());
    // One that cannot be made is there already, or shows in the end.
    (void)MakeOneFolder(path.substr(0, at), 0700);
  }
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace velmora
