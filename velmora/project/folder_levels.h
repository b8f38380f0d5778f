// Folders made with all that is missing above them.
#ifndef VELMORA_PROJECT_FOLDER_LEVELS_H_
#define VELMORA_PROJECT_FOLDER_LEVELS_H_

#include <optional>
#include <string_view>

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

// How many characters of a path are its root, as PathStripToRootW of Windows leaves it; 3 when it has
// none.
//
//   C:\P         3      \P              1
//   \\srv\P\sub  7      \\srv           5
//   P, C:P, /P   3
VELMORA_API size_t RootLength(std::wstring_view path);

// Whether the folder is there, made now or before.
VELMORA_API bool HasOrMakesFolder(const CString& path);

// Makes every level below the root that is missing. Returns the level that could not be made, nothing
// when the whole path is there. A path shorter than its root is one level. What is a name within the
// first three characters of a path without a root is taken to be there.
VELMORA_API std::optional<CString> MakeFolderLevels(const CString& path);

// Whether `name`, put behind a folder and a backslash, is a place inside that folder on every system: it
// begins with no separator, has no part that goes up, no drive or stream, no name of a device and at most
// 259 characters.
VELMORA_API bool StaysInsideFolder(std::wstring_view name);

}  // namespace velmora

#endif  // VELMORA_PROJECT_FOLDER_LEVELS_H_
