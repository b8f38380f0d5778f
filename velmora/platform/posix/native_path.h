// Paths of the suite as paths of this system.
//
//   \             a slash
//   X:\ or X:     the folder that stands for the drive: the environment variable VELMORA_DRIVE_X, else
//                 velmora/drive_x in the user's data folder ($XDG_DATA_HOME, else ~/.local/share);
//                 ".." goes by names, and from the root of the drive nowhere
//   letter case   a name that does not exist as spelled is the entry of its folder that differs in
//                 letter case only; of several the first by character number
//
// Names are UTF-8. A byte that is not stands in the text as the lone surrogate U+DC00 + byte, so that
// a name from the system finds its file again. A backslash within a name of the disk is U+DC5C there.
#ifndef VELMORA_PLATFORM_POSIX_NATIVE_PATH_H_
#define VELMORA_PLATFORM_POSIX_NATIVE_PATH_H_

#include <optional>
#include <string>
#include <string_view>

#include "velmora/text/string.h"

namespace velmora {

// The path to hand to the system. Empty, which no call of the system accepts, when there is none: the
// text holds a zero or is no valid text, or nobody's data folder is known.
std::string NativePath(const CString& path);

// The same text in the system's bytes and with slashes, nothing looked up. Nothing when it has none.
std::optional<std::string> NativeBytes(std::wstring_view text);

// One name of a folder, as the system gave it.
std::wstring TextFromName(std::string_view name);
// A whole path of the system, with backslashes.
std::wstring TextFromNativePath(std::string_view path);

// The folder for the user's data: $XDG_DATA_HOME, else ~/.local/share. Empty when there is none.
std::string UserDataFolder();

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_NATIVE_PATH_H_
