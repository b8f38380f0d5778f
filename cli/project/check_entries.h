// Entries of a project's folders that lead out of it or are invalid on Windows.
#ifndef VELMORA_CLI_PROJECT_CHECK_ENTRIES_H_
#define VELMORA_CLI_PROJECT_CHECK_ENTRIES_H_

#include <string>
#include <utility>
#include <vector>

#include "velmora/common/finding.h"
#include "velmora/text/string.h"

namespace velmora::cli {

// Each file's name with what was found about it; a file may occur more than once.
using FindingsByFile = std::vector<std::pair<std::string, Findings>>;

// Everything in the folder and below it, as far as kMostEntries. Links are checked, not followed.
void CheckEntries(const CString& folder, FindingsByFile* findings);
inline constexpr size_t kMostEntries = 100'000;

}  // namespace velmora::cli

#endif  // VELMORA_CLI_PROJECT_CHECK_ENTRIES_H_
