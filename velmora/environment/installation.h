// The suite's installation and the system's folders as registered.
#ifndef VELMORA_ENVIRONMENT_INSTALLATION_H_
#define VELMORA_ENVIRONMENT_INSTALLATION_H_

#include <optional>

#include "velmora/text/string.h"

namespace velmora {

// The folder of the first installation that is registered for `sub`.
std::optional<CString> FirstInstallationFolder(const CString& sub);
// The package of the first installation registered for `sub` in this folder, compared without regard to
// letter case and to a backslash at the end. Empty when it has no package; nothing when there is no such
// installation.
std::optional<CString> PackageInstalledIn(const CString& folder, const CString& sub);

// The registered application-data folders of the user and of all users, and the folder for programs. Empty
// when not registered.
CString RegisteredUserData();
CString RegisteredCommonData();
CString RegisteredProgramFiles();
// The folder of the platform's shared programs in either view of the registry; empty when this version is not
// installed.
CString PlatformFolder(const CString& version);

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_INSTALLATION_H_
