// Creates folders with missing parents, and checks names read from files: what is created or written by such
// a name stays inside its folder.
#ifndef VELMORA_COMMON_FOLDER_LEVELS_H_
#define VELMORA_COMMON_FOLDER_LEVELS_H_

#include <optional>
#include <string_view>

#include "velmora/text/string.h"

namespace velmora {

// The length of a path's root as PathStripToRootW of Windows leaves it; 3 for a path without one.
//
//   C:\P         3      \P              1
//   \\srv\P\sub  7      \\srv           5
//   P, C:P, /P   3
size_t RootLength(std::wstring_view path);

// Creates the folder if it is missing. False when it does not exist afterwards.
bool HasOrMakesFolder(const CString& path);

// Creates every missing level below the root. Returns the level that cannot be created, nothing on success. A
// path shorter than its root is one level. The first three characters of a path without a root count as
// existing.
std::optional<CString> MakeFolderLevels(const CString& path);

// Whether `name`, joined to a folder, stays inside that folder on every system: it does not begin with a
// separator, has no part "..", no drive, stream or device name, and at most 259 characters. Links that the
// user made are followed.
bool StaysInsideFolder(std::wstring_view name);

// Whether a part of the path is a device name, which Windows recognises in every folder: "CON", "nul.txt",
// "COM1". Reading from a device may never end.
bool NamesDevice(std::wstring_view path);

}  // namespace velmora

#endif  // VELMORA_COMMON_FOLDER_LEVELS_H_
