// Where a path leads when every link on the way is followed.
#ifndef VELMORA_PLATFORM_REAL_PATH_H_
#define VELMORA_PLATFORM_REAL_PATH_H_

#include <optional>

#include "velmora/text/string.h"

namespace velmora {

// The path of the file or folder itself, without links (symbolic ones, and the junctions of Windows), "."
// and "..". To be compared with others that come from here, not to be shown. Nothing when there is no such
// entry, or a link that leads nowhere.
std::optional<CString> RealPath(const CString& path);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_REAL_PATH_H_
