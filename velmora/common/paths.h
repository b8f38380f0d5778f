// Paths as the suite writes them: folder, backslash, name.
#ifndef VELMORA_COMMON_PATHS_H_
#define VELMORA_COMMON_PATHS_H_

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

// Blanks around the path and then double quotes around it are dropped; the rest is cut at its last
// backslash, which goes to neither part. Without one the folder is empty. Either output may be null.
//
//   SplitPath(L" \"C:\\P\\ROAD.VL\" ", &folder, &name)   // C:\P and ROAD.VL
VELMORA_API void SplitPath(const CString& path, CString* folder, CString* name);

// Mode 1 turns every backslash into a slash, any other mode every slash into a backslash.
VELMORA_API CString ConvertSlashes(const CString& path, int mode);

// folder, "\", name. Separators that are there already are not looked at.
VELMORA_API CString JoinPath(const CString& folder, const CString& name);

// The part after the last backslash; the whole path without one. Nothing is trimmed.
VELMORA_API CString NameOfPath(const CString& path);

// Raises a to z only. Callers rely on å, ä and ö keeping their case in sort keys: listings of years back
// are ordered that way.
VELMORA_API CString SortUpper(const CString& text);

}  // namespace velmora

#endif  // VELMORA_COMMON_PATHS_H_
