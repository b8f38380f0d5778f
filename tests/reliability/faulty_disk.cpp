#include "tests/reliability/faulty_disk.h"

#include <algorithm>

namespace velmora::testing {

void FaultyDisk::Begin(const Fault& fault) {
  fault_ = fault;
  actions_.clear();
  events_.clear();
}

std::string FaultyDisk::RelativePath(const std::filesystem::path& path) {
  // The path of a folder may end with a slash or a dot.
  const std::filesystem::path plain = (path / "").lexically_normal().parent_path();
  const std::string relative = Utf8Path(plain.lexically_relative(root_));
  if (relative.empty() || relative.starts_with("..")) strays_.push_back(Utf8Path(path));
  return relative;
}

InjectedError FaultyDisk::Before(const DiskCall& call, size_t* count) {
  actions_.push_back(call.action);
  if (fault_.at == 0 || Calls() < fault_.at || (Calls() > fault_.at && !fault_.lasting))
    return InjectedError::kNone;
  if (Calls() > fault_.at || fault_.most == kAll) return fault_.error;
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
