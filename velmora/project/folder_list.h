// The list of further folders of a project: a text file with one folder a line, relative to the project.
// Empty lines are ignored. The ini file's key MAPPAR names it (proj_path.h).
#ifndef VELMORA_PROJECT_FOLDER_LIST_H_
#define VELMORA_PROJECT_FOLDER_LIST_H_

#include <cstdint>
#include <optional>
#include <vector>

#include "velmora/common/finding.h"
#include "velmora/text/string.h"

namespace velmora {

struct ListedFolder {
  std::int64_t line = 0;  // from 1
  CString name;           // as it stands in the line, the first 255 characters when it is not allowed
  bool allowed = true;    // the name stays inside the project
};

struct FolderList {
  std::vector<ListedFolder> folders;
  // Where reading ended before the end of the file: a line beyond kMostListedFolders, or one without a name
  // that cannot be read.
  std::optional<ListedFolder> unread;
};
inline constexpr size_t kMostListedFolders = 4096;

// Empty for a file that cannot be opened.
FolderList ReadFolderList(const CString& file);

// The lines that make no folder in a project.
Findings CheckFolderList(const FolderList& list);

}  // namespace velmora

#endif  // VELMORA_PROJECT_FOLDER_LIST_H_
