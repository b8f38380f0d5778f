// A key's path in the database.
#ifndef VELMORA_PLATFORM_POSIX_REGISTRY_PATH_H_
#define VELMORA_PLATFORM_POSIX_REGISTRY_PATH_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/platform/types.h"

namespace velmora {

struct RegistryPath {
  std::int64_t root = 0;            // the root's number, below 0
  std::vector<std::wstring> parts;  // below it, with Wow6432Node for the 32-bit view
};

// Returns 0 or kRegistryBadRoot, kRegistryBadPath, kRegistryBadArgument. `access` selects the view.
int ParseRegistryPath(HKEY root, std::wstring_view path, unsigned access, RegistryPath* parsed);

// Whether a name is valid and not too long, and its form for comparison.
bool IsRegistryName(std::wstring_view name, size_t longest);
std::string FoldedRegistryName(std::wstring_view name);

inline constexpr size_t kLongestKeyName = 255;
inline constexpr size_t kLongestValueName = 16383;

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_REGISTRY_PATH_H_
