// Where the suite keeps a user's data, below the folders that the system gives its programs.
//
//   user folder     DATA\Quorval\Zennik\Velmora\R20\sv    DATA: the user's application data
//   shared folder   ALL\Quorval\Zennik\Velmora\sv         ALL: that of all users
//
// Only the user folder has a level for the release; installations rely on it.
#ifndef VELMORA_ENVIRONMENT_USER_FOLDERS_H_
#define VELMORA_ENVIRONMENT_USER_FOLDERS_H_

#include <vector>

#include "velmora/text/string.h"

namespace velmora {

inline constexpr wchar_t kIniName[] = L"Velmora.ini";
inline constexpr wchar_t kRelease[] = L"R20";

CString UserFolder(const CString& data_folder, const CString& release, const CString& sub);
CString SharedFolder(const CString& data_folder, const CString& sub);

// The last two characters of an ini file's folder, and the last three of the folder above it. Shorter or
// empty when the path has fewer.
//
//   SplitIniPath(L"D:\\Quorval\\Zennik\\Velmora\\R20\\sv\\Velmora.ini")   // sv and R20
struct IniPathParts {
  CString sub;
  CString release;
};
IniPathParts SplitIniPath(const CString& ini_path);

// The path under the maker's former name; empty when `path` is not below the maker's folder. Only the last
// occurrence of the maker's name is replaced.
CString FormerMakerPath(const CString& path);

// The names of the files in a folder, in the order of FindFiles. Names over 259 characters are passed
// over, as in every listing of the suite. Empty for an empty or missing folder, and for a path of
// kLongestFolder characters or more: nothing is copied from there.
inline constexpr int kLongestFolder = 260;
std::vector<CString> FilesIn(const CString& folder);

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_USER_FOLDERS_H_
