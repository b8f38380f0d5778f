// Folders made with all that is missing above them, and the rule for names that come out of files: what is
// made or written by such a name lies in the folder that it is meant for.
#ifndef VELMORA_COMMON_FOLDER_LEVELS_H_
#define VELMORA_COMMON_FOLDER_LEVELS_H_

#include <optional>
#include <string_view>

#include "velmora/text/string.h"

namespace velmora {

// How many characters of a path are its root, as PathStripToRootW of Windows leaves it; 3 when it has
// none.
//
//   C:\P         3      \P              1
//   \\srv\P\sub  7      \\srv           5
//   P, C:P, /P   3
size_t RootLength(std::wstring_view path);

// Whether the folder is there, made now or before.
bool HasOrMakesFolder(const CString& path);

// Makes every level below the root that is missing. Returns the level that could not be made, nothing
// when the whole path is there. A path shorter than its root is one level. What is a name within the
// first three characters of a path without a root is taken to be there.
std::optional<CString> MakeFolderLevels(const CString& path);

// Whether `name`, put behind a folder and a backslash, is a place inside that folder on every system: it
// begins with no separator, has no part that goes up, no drive or stream, no name of a device and at most
// 259 characters.
bool StaysInsideFolder(std::wstring_view name);

// Whether a part of the path is the name of a device, as Windows sees it in every folder: "CON", "nul.txt",
// "COM1". What is read by such a name may never end.
bool NamesDevice(std::wstring_view path);

// Whether a folder `listed` in a file can be made in `folder` and nowhere else: it stays inside, and so does
// what is there of it already, links followed. Separators that it begins with are passed over, so a line of
// nothing else is the folder itself.
bool MayBeMadeIn(const CString& folder, std::wstring_view listed);

// A folder list is read as far as this many folders; of lines that may not be made it takes so many. What has
// more is no list.
inline constexpr int kMostListedFolders = 4096;
inline constexpr int kMostRefusedFolders = 64;

}  // namespace velmora

#endif  // VELMORA_COMMON_FOLDER_LEVELS_H_
