// The plan of CTundrilIni::AllUserFileCheck: which files it would copy, for programs that show it first.
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
  kOwnIniFile,  // Velmora.ini of the user: is never copied
  kUnreadable,  // the source cannot be examined
};

struct UserFile {
  CString source;
  CString destination;
  UserFileState state = UserFileState::kMissing;
};

// Folders that are unknown or not reached are empty. Without the user folder nothing is planned.
struct UserFilePlan {
  CString user_folder;
  bool user_folder_exists = false;
  CString shared_folder;
  CString binaries_source;
  CString binaries_destination;
  std::vector<UserFile> files;  // in the order in which they are checked
};

// Reads the registry and the folders; changes nothing. The folders follow from the path of the object's ini
// file (user_folders.h) and from the folders that the shell has registered. The platform's version is the key
// ZENNIKVER of the ini file's section SYSTEM, 26.15 without one.
UserFilePlan PlanUserFileCheck(const CTundrilIni& ini);

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_USER_DATA_H_
