// Where a key's path leads in the database.
#ifndef VELMORA_PLATFORM_POSIX_REGISTRY_PATH_H_
#define VELMORA_PLATFORM_POSIX_REGISTRY_PATH_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/platform/types.h"

namespace velmora {

struct RegistryPath {
  std::int64_t root = 0;            // the number of the root's row, below 0
  std::vector<std::wstring> parts;  // from there on, both views told apart by their Wow6432Node
};

// Returns 0 or kRegistryBadRoot, kRegistryBadPath, kRegistryBadArgument. `access` tells the view.
int ParseRegistryPath(HKEY root, std::wstring_view path, unsigned access, RegistryPath* parsed);

// Whether a name is one, of a length that the system allows, and how it compares.
bool IsRegistryName(std::wstring_view name, size_t longest);
std::string FoldedRegistryName(std::wstring_view name);

inline constexpr size_t kLongestKeyName = 255;
inline constexpr size_t kLongestValueName = 16383;

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_REGISTRY_PATH_H_
