#include "tests/reliability/faulty_disk.h"

#include <algorithm>

namespace velmora::testing {

void FaultyDisk::Begin(const Fault& fault) {
  fault_ = fault;
  actions_.clear();
  events_.clear();
}

std::string FaultyDisk::RelativePath(const std::filesystem::path& path) {
  const std::string relative = Utf8Path(path.lexically_normal().lexically_relative(root_));
  const bool inside = !relative.empty() && !relative.starts_with("..");
  if (!inside) strays_.push_back(Utf8Path(path));
  // A folder may come with a slash at its end.
  return relative.size() > 1 && relative.ends_with("/.") ? relative.substr(0, relative.size() - 2)
         : relative.ends_with('/')                       ? relative.substr(0, relative.size() - 1)
                                                         : relative;
}

InjectedError FaultyDisk::Before(const DiskCall& call, size_t* count) {
  actions_.push_back(call.action);
  if (fault_.at == 0 || Calls() < fault_.at || (Calls() > fault_.at && !fault_.lasting))
    return InjectedError::kNone;
  if (Calls() > fault_.at || fault_.most == kAll) return fault_.trouble;
  *count = std::min(*count, fault_.most);
  return InjectedError::kNone;
}

void FaultyDisk::After(const DiskCall& call, bool done) {
  if (!done || call.action == DiskAction::kOpenToRead || call.action == DiskAction::kRead) return;
  events_.push_back({.action = call.action,
                     .path = RelativePath(call.path),
                     .new_path = call.action == DiskAction::kRename ? RelativePath(call.new_path) : "",
                     .bytes = std::string(call.bytes)});
}

void FaultyDisk::Wrote(const std::filesystem::path& path, std::string_view bytes, size_t offset,
                       bool truncates) {
  events_.push_back({.action = DiskAction::kWrite,
                     .path = RelativePath(path),
                     .new_path = {},
                     .bytes = std::string(bytes),
                     .offset = offset,
                     .truncates = truncates});
}

}  // namespace velmora::testing
