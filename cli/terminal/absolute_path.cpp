#include "cli/terminal/absolute_path.h"

#include <optional>
#include <system_error>
#include <type_traits>

#include "velmora/platform/files.h"
#include "velmora/text/codepage.h"

namespace velmora::cli {
namespace {

// Systems differ in the characters of a path: bytes as they are, or wide text.
template <class Path>
Path MakePath(const std::string& name) {
  if constexpr (std::is_same_v<typename Path::value_type, wchar_t>)
    return Path(WideFromUtf8(name));
  else
    return Path(name);
}

template <class Path>
std::string NameOf(const Path& path) {
  if constexpr (std::is_same_v<typename Path::value_type, wchar_t>)
    return Utf8FromWide(path.native());
  else
    return path.native();
}

}  // namespace

std::filesystem::path SystemPath(const std::string& name) { return MakePath<std::filesystem::path>(name); }

std::string AbsolutePath(const std::string& name) {
  if (const std::optional<std::string> drive_path = DrivePath(name)) return *drive_path;
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(SystemPath(name), error);
  return error ? name : NameOf(path.lexically_normal());
}

}  // namespace velmora::cli
