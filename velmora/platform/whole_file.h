// A whole file in memory, and why a file could not be opened.
#ifndef VELMORA_PLATFORM_WHOLE_FILE_H_
#define VELMORA_PLATFORM_WHOLE_FILE_H_

#include <string>

#include "velmora/text/string.h"

namespace velmora {

// For a user: why GetFileStatus finds nothing of this name, which `missing` says of one that is missing.
std::string WhyNotFound(const CString& path, const std::string& missing);
// For a user: why the file could not be opened for reading, and what to do.
std::string WhyUnopened(const CString& path);

// Appends a file of at most 256 MB to *bytes. Why not, for a user; empty when done.
[[nodiscard]] std::string ReadWholeFile(const CString& path, std::string* bytes);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_WHOLE_FILE_H_
