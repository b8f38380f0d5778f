// Entries of a project's folders that lead out of it or are invalid on Windows.
#ifndef VELMORA_CLI_PROJECT_CHECK_ENTRIES_H_
#define VELMORA_CLI_PROJECT_CHECK_ENTRIES_H_

#include <functional>
#include <vector>

#include "cli/context/diagnosis.h"
#include "velmora/platform/files.h"

namespace velmora::cli {

// What is done with the entries on the way. Paths are relative to the checked folder; a folder's is empty or
// ends in a backslash.
struct EntryVisitor {
  std::function<void(const CString& folder, const std::vector<FoundFile>& entries)> folder;
  std::function<void(const CString& path)> file;  // an ordinary file, links left out
};

// Everything in the folder and below it, as far as kMostEntries. Links are checked, not followed.
void CheckEntries(const CString& folder, Diagnoses* found, const EntryVisitor& visitor = {});
inline constexpr size_t kMostEntries = 100'000;

}  // namespace velmora::cli

#endif  // VELMORA_CLI_PROJECT_CHECK_ENTRIES_H_
