// Profiles without the system's functions, for other systems and for encodings that those functions do not
// read. A write replaces the whole file in one step; simultaneous writes of several programs are all kept.
#ifndef VELMORA_PLATFORM_PROFILE_FILE_H_
#define VELMORA_PLATFORM_PROFILE_FILE_H_

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "velmora/text/codepage.h"
#include "velmora/text/string.h"

namespace velmora {

inline constexpr size_t kLongestProfileValue = 254;  // characters that are read

// By the mark of the file; Windows-1252 for a missing one.
TextEncoding ProfileEncoding(const CString& path);

// Nothing when the file cannot be read or is too large for a profile.
std::optional<std::string> ReadProfileBytes(const CString& path);

// The values of several keys, as ReadProfile of each.
std::vector<CString> ReadProfileFile(const CString& section, std::span<const CString> keys,
                                     const CString& path);
bool WriteProfileFile(const CString& section, const CString& key, const wchar_t* value, const CString& path);

// Whether `file` is a name without a folder.
bool IsBareFileName(const CString& file);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_PROFILE_FILE_H_
