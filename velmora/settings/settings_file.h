// Where a settings or code file is: a project's own copy hides the installation's.
#ifndef VELMORA_SETTINGS_SETTINGS_FILE_H_
#define VELMORA_SETTINGS_SETTINGS_FILE_H_

#include <vector>

#include "velmora/text/string.h"

namespace velmora {

class CProjPath;
class CTundrilIni;

// Whether a project is open. One without a folder would have its files at the root of the disk.
bool HasFolder(const CProjPath* project);

// The paths that `name` is looked for at, first come first taken: the project folder, the folder of
// TUNDRIL.CFG, the program folder. Without a project or an installation, and for a folder of the
// installation that is not known, there is no such path.
std::vector<CString> SettingsFilePaths(const CTundrilIni* ini, const CProjPath* project, const CString& name);

// The first of the paths where something is; empty when there is nothing at any.
CString FirstExisting(const std::vector<CString>& paths);

// A text of a path without its last four characters, ".DAT" or ".PAR" as a rule, and with ".tmp".
CString TemporaryPathFor(const CString& path);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_SETTINGS_FILE_H_
