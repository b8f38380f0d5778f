#include "velmora/platform/whole_file.h"

#include <vector>

#include "velmora/platform/files.h"

namespace velmora {

std::string WhyNotFound(const CString& path, const std::string& missing) {
  switch (WhyNoStatus(path)) {
    case NoStatus::kNoPermission:
      return "cannot be examined; check the permissions of its folder";
    case NoStatus::kPathTooLong:
      return "has a longer path than the system opens; shorten the names, or move it up";
    case NoStatus::kMissing:
      break;
  }
  return missing;
}

std::string WhyUnopened(const CString& path) {
  const std::optional<FileStatus> status = GetFileStatus(path);
  if (!status) return WhyNotFound(path, "no such file; check the name");
  if (status->kind == FileKind::kFolder) return "is a folder; name a file in it";
  if (status->kind == FileKind::kOther) return "is not a regular file";
  return "cannot be opened for reading; check its permissions";
}

std::string ReadWholeFile(const CString& path, std::string* bytes) {
  constexpr size_t kLargest = size_t{256} << 20;
  InputFile input;
  if (!input.Open(path)) return WhyUnopened(path);
  std::vector<char> block(size_t{1} << 20);
  const size_t before = bytes->size();
  for (;;) {
    const std::int64_t count = input.Read(block);
    if (count < 0) return "cannot be read to its end";
    if (count == 0) return {};
    bytes->append(block.data(), static_cast<size_t>(count));
    if (bytes->size() - before > kLargest) return "is larger than 256 MB; give a smaller file";
  }
}

}  // namespace velmora
