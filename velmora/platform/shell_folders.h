// The folders that a system sets aside for programs' data.
#ifndef VELMORA_PLATFORM_SHELL_FOLDERS_H_
#define VELMORA_PLATFORM_SHELL_FOLDERS_H_

#include "velmora/text/string.h"

namespace velmora {

// The user's application-data folder, made when it is missing; empty when that fails. Elsewhere than on
// Windows $XDG_DATA_HOME/velmora/appdata (default ~/.local/share).
CString UserApplicationData();
// The environment variable's value; nothing when it is not set.
bool ReadEnvironment(const wchar_t* name, CString* value);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_SHELL_FOLDERS_H_
