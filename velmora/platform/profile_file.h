// Profiles without the system's own functions, for systems that have none and for the files that those
// functions do not know how to read. A write replaces the whole file in one step, and what several
// programs write at once is all there in the end.
#ifndef VELMORA_PLATFORM_PROFILE_FILE_H_
#define VELMORA_PLATFORM_PROFILE_FILE_H_

#include <optional>
#include <string>

#include "velmora/text/codepage.h"
#include "velmora/text/string.h"

namespace velmora {

inline constexpr size_t kLongestProfileValue = 254;  // characters, as it is read

// By the mark of the file; Windows-1252 for a missing one.
TextEncoding ProfileEncoding(const CString& path);

// Nothing when the file cannot be read, or is larger than any profile is.
std::optional<std::string> ReadProfileBytes(const CString& path);

CString ReadProfileFile(const CString& section, const CString& key, const CString& path);
bool WriteProfileFile(const CString& section, const CString& key, const wchar_t* value, const CString& path);

// Whether `file` is a name without a folder.
bool IsBareFileName(const CString& file);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_PROFILE_FILE_H_
