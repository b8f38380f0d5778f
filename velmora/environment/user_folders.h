// Where the suite keeps data below the folders that a system gives its programs: names and paths only,
// no disk is looked at.
//
//   user folder     DATA\Quorval\Zennik\Velmora\R20\sv    DATA: the user's application data
//   shared folder   ALL\Quorval\Zennik\Velmora\sv         ALL: that of all users
//
// The user folder has a level for the release, the shared one has none: installations rely on it.
#ifndef VELMORA_ENVIRONMENT_USER_FOLDERS_H_
#define VELMORA_ENVIRONMENT_USER_FOLDERS_H_

#include "velmora/text/string.h"

namespace velmora {

inline constexpr wchar_t kIniName[] = L"Velmora.ini";
inline constexpr wchar_t kRelease[] = L"R20";

CString UserFolder(const CString& data_folder, const CString& release, const CString& sub);
CString SharedFolder(const CString& data_folder, const CString& sub);

// What the path of a user's ini file tells: the two characters of its folder's end, and the three of
// the folder above. Shorter or empty when the path has less.
//
//   SplitIniPath(L"D:\\Quorval\\Zennik\\Velmora\\R20\\sv\\Velmora.ini")   // sv and R20
struct IniPathParts {
  CString sub;
  CString release;
};
IniPathParts SplitIniPath(const CString& ini_path);

// The same path where the maker's former name was used; empty when `path` does not lie in the maker's
// folder. A data folder that happens to have the maker's name in it keeps it.
CString FormerMakerPath(const CString& path);

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_USER_FOLDERS_H_
