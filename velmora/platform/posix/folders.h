// Folders of this system, by its own paths.
#ifndef VELMORA_PLATFORM_POSIX_FOLDERS_H_
#define VELMORA_PLATFORM_POSIX_FOLDERS_H_

#include <string>

namespace velmora {

// Makes a folder and those above it that are missing, for the user only, as the rule for folders of
// the user's data wants it. True when it is there in the end.
bool MakeFolders(const std::string& path);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_FOLDERS_H_
