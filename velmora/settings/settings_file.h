// Where a settings or code file is, and the message boxes about it. A project's own copy hides the
// installation's.
#ifndef VELMORA_SETTINGS_SETTINGS_FILE_H_
#define VELMORA_SETTINGS_SETTINGS_FILE_H_

#include <vector>

#include "velmora/text/string.h"

namespace velmora {

class CProjPath;
class CTundrilIni;

// Whether a project is open. One without a folder would have its files at the root of the disk.
bool HasFolder(const CProjPath* project);

struct SettingsPlace {
  const char* name;  // "project copy"
  CString path;
  bool of_project = false;  // else all projects without a copy of their own share it
  bool exists = false;
};
// Where the file is looked for, in order: the project folder, the folder of TUNDRIL.CFG, the program folder.
// Without a project or an installation, and for a folder of the installation that is not known, there is no
// such place. TUNDRIL.CFG is only looked for beside Velmora.ini.
std::vector<SettingsPlace> SettingsPlaces(const CTundrilIni* ini, const CProjPath* project,
                                          const CString& name);
// The first that exists; null when none does.
const SettingsPlace* PlaceInUse(const std::vector<SettingsPlace>& places);
// Its path; empty when none exists.
CString FindSettingsFile(const CTundrilIni* ini, const CProjPath* project, const CString& name);

// The path without its last four characters, ".DAT" or ".PAR" as a rule, and with ".tmp".
CString TemporaryPathFor(const CString& path);

// The boxes. Their wording is the suite's own, the missing word too. `text` has one "%s".
void ShowFileMessage(const wchar_t* text, const CString& path, const CString& caption);
void ShowUnreadable(const CString& path, const CString& caption);
void ShowUnwritable(const CString& path, const CString& caption);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_SETTINGS_FILE_H_
