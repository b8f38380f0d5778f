// Translates paths of the suite to paths of this system.
//
//   \             a slash
//   X:\ or X:     the drive's folder: the environment variable VELMORA_DRIVE_X, else velmora/drive_x in the
//                 user's data folder ($XDG_DATA_HOME, else ~/.local/share), made with the first file or
//                 folder in it; ".." is resolved by name and stops at the drive's root
//   \\?\X:\       the same
//   letter case   a name that does not exist as spelled is the entry of its folder that differs in
//                 letter case only; of several the first by character number
//   U+DC2F        as the first character: the names after it are taken as spelled (PathAsSpelled)
//
// Names are UTF-8. An invalid byte becomes the lone surrogate U+DC00 + byte, so that names from the system
// can be translated back. A backslash within a name on the disk becomes U+DC5C.
#ifndef VELMORA_PLATFORM_POSIX_NATIVE_PATH_H_
#define VELMORA_PLATFORM_POSIX_NATIVE_PATH_H_

#include <optional>
#include <string>
#include <string_view>

#include "velmora/text/string.h"

namespace velmora {

inline constexpr wchar_t kAsSpelled = 0xDC2F;

// The path for system calls. Empty, which every call rejects, when the text contains a zero or is invalid, or
// the user's data folder is unknown.
std::string NativePath(const CString& path);
// The same without regard to which names there are: their letters may be of the other case on the disk.
std::string PathAsGiven(const CString& path);
// As NativePath for a file or folder that is about to be created: makes the drive's folder in the user's data
// folder.
std::string NativePathToCreate(const CString& path);

// A path that begins with a drive ("X:", "X:\name" or "\\?\X:\name", but not "X:name") with slashes and
// without "." and "..". Nothing for any other path.
std::optional<std::string> PlainDrivePath(const CString& path);

// The text in the system's bytes with slashes, without looking up names. Nothing for invalid text.
std::optional<std::string> NativeBytes(std::wstring_view text);

// Whether a path of the system names an entry of a folder, a link also where it leads nowhere.
bool HasEntry(const std::string& path);
// A folder entry's name as text.
std::wstring TextFromName(std::string_view name);
// A path of the system as text with backslashes.
std::wstring TextFromNativePath(std::string_view path);

// The folder for the user's data: $XDG_DATA_HOME, else ~/.local/share. Empty when there is none.
std::string UserDataFolder();

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_NATIVE_PATH_H_
