// The user's application-data folder, and environment variables.
#ifndef VELMORA_PLATFORM_SHELL_FOLDERS_H_
#define VELMORA_PLATFORM_SHELL_FOLDERS_H_

#include "velmora/text/string.h"

namespace velmora {

// The user's application-data folder, created when it is missing; empty on failure. On other systems than
// Windows $XDG_DATA_HOME/velmora/appdata (default ~/.local/share).
CString UserApplicationData();
// That folder where no shell registers it, whether or not it exists. Empty on Windows: programs that rely on
// the registration find nothing without it.
CString UnregisteredUserData();
// False when the environment variable is not set; *value is then unchanged.
bool ReadEnvironment(const wchar_t* name, CString* value);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_SHELL_FOLDERS_H_
