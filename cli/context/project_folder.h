// A project's folder as the user named it.
#ifndef VELMORA_CLI_CONTEXT_PROJECT_FOLDER_H_
#define VELMORA_CLI_CONTEXT_PROJECT_FOLDER_H_

#include <string>

#include "velmora/project/proj_path.h"

namespace velmora::cli {

// The full path without a backslash at its end, as the library wants it.
CString ProjectFolder(const std::string& given);
// The same, for a folder that must exist; throws a Refusal otherwise.
CString ExistingProjectFolder(const std::string& given);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CONTEXT_PROJECT_FOLDER_H_
