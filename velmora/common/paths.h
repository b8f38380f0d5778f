// Paths as the suite writes them: folder, backslash, name.
#ifndef VELMORA_COMMON_PATHS_H_
#define VELMORA_COMMON_PATHS_H_

#include <string>
#include <string_view>

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

// Removes blanks and then double quotes around the path and splits it at the last backslash, which is in
// neither part. Without one the folder is empty. Either output may be null.
//
//   SplitPath(L" \"C:\\P\\ROAD.VL\" ", &folder, &name)   // C:\P and ROAD.VL
VELMORA_API void SplitPath(const CString& path, CString* folder, CString* name);

// Mode 1 turns every backslash into a slash, any other mode every slash into a backslash.
VELMORA_API CString ConvertSlashes(const CString& path, int mode);

// folder, "\", name; existing separators are not checked.
VELMORA_API CString JoinPath(const CString& folder, const CString& name);

// The part after the last of the system's separators (platform/files.h); the whole path without one. Nothing
// is trimmed.
VELMORA_API CString NameOfPath(const CString& path);

// The ending of a file's name with its dot, in small letters: ".csv". Empty for a name without one.
std::string EndingOfName(std::string_view path);

// Converts a to z to capitals. Required: å, ä and ö keep their case in sort keys, as in existing listings.
VELMORA_API CString SortUpper(const CString& text);

}  // namespace velmora

#endif  // VELMORA_COMMON_PATHS_H_
