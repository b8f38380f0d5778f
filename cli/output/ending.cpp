#include "cli/output/ending.h"

#include <algorithm>

#include "cli/terminal/error.h"
#include "velmora/platform/files.h"

namespace velmora::cli {

std::string EndingOf(const std::string& file) {
  const size_t name = file.find_last_of("/\\") + 1;
  const size_t dot = file.rfind('.');
  if (dot == std::string::npos || dot <= name || dot + 1 == file.size()) return {};
  const std::optional<FileStatus> status = GetFileStatus(PathAsSpelled(file));
  if (status && status->kind == FileKind::kOther) return {};
  std::string ending = file.substr(dot);
  for (char& c : ending)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
  return ending;
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
