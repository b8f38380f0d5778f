// Names in a project that lead out of it or are invalid on Windows: entries of its folders, and the names in
// its files.
#ifndef VELMORA_CLI_PROJECT_CHECK_NAMES_H_
#define VELMORA_CLI_PROJECT_CHECK_NAMES_H_

#include <cstdint>
#include <string>
#include <vector>

#include "velmora/project/proj_path.h"
#include "velmora/text/string.h"

namespace velmora::cli {

struct ProjectFinding {
  std::string where;
  std::int64_t line;  // 0: none
  std::string text;
};
using ProjectFindings = std::vector<ProjectFinding>;

// Everything in the folder and below it, as far as kMostEntries. Links are checked, not followed.
void CheckEntries(const CString& folder, ProjectFindings* findings);
inline constexpr size_t kMostEntries = 100'000;

// The area file and the alignment that it names.
void CheckArea(const CProjPath& project, ProjectFindings* findings);

// The lines of a folder list that make no folder in this project.
void CheckFolderList(const CString& list, const CString& folder, ProjectFindings* findings);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_PROJECT_CHECK_NAMES_H_
