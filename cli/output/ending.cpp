#include "cli/output/ending.h"

#include <algorithm>

#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"

namespace velmora::cli {

std::string EndingOf(const std::string& file) {
  const std::string ending = EndingOfName(file);
  if (ending.empty()) return {};
  const std::optional<FileStatus> status = GetFileStatus(PathAsSpelled(file));
  return status && status->kind == FileKind::kOther ? std::string() : ending;
}

void RequireEnding(const std::string& file, const std::string& what, const std::vector<std::string>& known) {
  const std::string ending = EndingOf(file);
  if (ending.empty() || std::find(known.begin(), known.end(), ending) != known.end()) return;
  std::string list;
  for (size_t i = 0; i < known.size(); ++i)
    list += (i == 0 ? "" : i + 1 == known.size() ? " or " : ", ") + known[i];
  throw Refusal(
      At(file, what + " is not written as " + Quoted(ending) + "; choose a name that ends in " + list));
}

}  // namespace velmora::cli
