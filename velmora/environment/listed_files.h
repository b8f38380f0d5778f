// The files of a folder for the copying of a user's data.
#ifndef VELMORA_ENVIRONMENT_LISTED_FILES_H_
#define VELMORA_ENVIRONMENT_LISTED_FILES_H_

#include <vector>

#include "velmora/text/string.h"

namespace velmora {

// The names of the files in a folder, as CDirSort lists them unsorted. Empty for an empty name, for a
// folder that is not there and for a path of kLongestFolder characters or more: nothing can be copied
// from there.
inline constexpr int kLongestFolder = 260;
std::vector<CString> FilesIn(const CString& folder);

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_LISTED_FILES_H_
