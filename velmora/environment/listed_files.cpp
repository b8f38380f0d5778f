#include "velmora/environment/listed_files.h"

#include "velmora/common/paths.h"
#include "velmora/project/dir_sort.h"

namespace velmora {

std::vector<CString> FilesIn(const CString& folder) {
  // A length that once ended the process: such a folder has no files for us.
  if (folder.IsEmpty() || folder.GetLength() >= kLongestFolder) return {};
  CDirSort listing;
  listing.Init(JoinPath(folder, L"*.*"), 0, 1, 0, 0);
  std::vector<CString> names;
  if (listing.Home() != 0) return names;
  do names.emplace_back(listing.pael->namn);
  while (listing++ != nullptr);
  return names;
}

}  // namespace velmora
