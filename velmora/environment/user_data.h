// The user data check, decided apart from being carried out: what CTundrilIni::AllUserFileCheck would
// copy, for a program that wants to show it first.
//
//   UserFilePlan plan = PlanUserFileCheck(ini);    // shows what would happen
//   ini.AllUserFileCheck();                        // does it
//   plan = PlanUserFileCheck(ini);                 // what is still missing or newer could not be copied
#ifndef VELMORA_ENVIRONMENT_USER_DATA_H_
#define VELMORA_ENVIRONMENT_USER_DATA_H_

#include <vector>

#include "velmora/environment/tundril_ini.h"
#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

enum class UserFileState {
  kMissing,     // at the destination: is copied
  kNewer,       // the source was modified after the destination: is copied
  kUpToDate,    // the destination is as new or newer
  kOwnIniFile,  // Velmora.ini, which is the user's own and never copied
  kUnreadable,  // the source cannot be examined
  kForbidden,   // by its name it would go elsewhere, to a device say (project/folder_levels.h): is not copied
};

struct UserFile {
  CString source;
  CString destination;
  UserFileState state = UserFileState::kMissing;
};

// A folder that is not known, or whose step is not reached, is empty. Nothing at all is done without the
// user folder.
struct UserFilePlan {
  CString user_folder;
  bool user_folder_exists = false;
  CString shared_folder;
  CString binaries_source;
  CString binaries_destination;
  std::vector<UserFile> files;  // in the order in which they are looked at
};

// Reads the registry and the folders; changes nothing. The folders follow from where the object's ini file
// lies (user_folders.h) and from what the shell has registered. The binaries are those of the platform of
// version ZENNIKVER in the ini file's section SYSTEM, 26.15 when it has none.
VELMORA_API UserFilePlan PlanUserFileCheck(const CTundrilIni& ini);

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_USER_DATA_H_
