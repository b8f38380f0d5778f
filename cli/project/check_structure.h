// The folders and databases of a project, and names that differ in letter case only.
#ifndef VELMORA_CLI_PROJECT_CHECK_STRUCTURE_H_
#define VELMORA_CLI_PROJECT_CHECK_STRUCTURE_H_

#include <string>
#include <vector>

#include "cli/context/diagnosis.h"
#include "velmora/platform/files.h"

namespace velmora::cli {

// Whether the folder holds a folder or database of any program.
bool IsProject(const CString& folder);

// What the programs in use lack. `given` is the folder as commands name it.
void CheckPrograms(const CString& folder, const std::string& given, Diagnoses* found);

// Names of one folder that only some programs tell apart. `below` is put before them.
void CheckNames(const std::vector<FoundFile>& entries, const CString& below, Diagnoses* found);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_PROJECT_CHECK_STRUCTURE_H_
