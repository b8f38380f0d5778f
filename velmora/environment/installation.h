// What the registry tells about the suite's installation and the system's folders.
#ifndef VELMORA_ENVIRONMENT_INSTALLATION_H_
#define VELMORA_ENVIRONMENT_INSTALLATION_H_

#include <optional>

#include "velmora/text/string.h"

namespace velmora {

// The folder of the first installation that is registered for `sub`.
std::optional<CString> FirstInstallationFolder(const CString& sub);
// The package of the first installation that is registered for `sub` in this folder, one backslash at its
// registered end and letter case apart. Empty when it names none; nothing when there is no such
// installation.
std::optional<CString> PackageInstalledIn(const CString& folder, const CString& sub);

// The application-data folders that the shell has registered for the user and for all users, and the
// folder for programs. Empty when they are not registered.
CString RegisteredUserData();
CString RegisteredCommonData();
CString RegisteredProgramFiles();
// The folder of the platform's shared programs; empty when that version of it is not installed.
CString PlatformFolder(const CString& version);

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_INSTALLATION_H_
