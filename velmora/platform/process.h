// The process's command line and the profile of its application object.
#ifndef VELMORA_PLATFORM_PROCESS_H_
#define VELMORA_PLATFORM_PROCESS_H_

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

// The command line, safe for threads: the program (in double quotes when its path contains a blank, with
// backslashes), then the arguments. SetCommandLine replaces it: programs rely on CTundrilIni::Init storing
// the program folder here. @{
VELMORA_API CString CommandLine();
VELMORA_API void SetCommandLine(const CString& text);
// @}

// The profile file of the process's application object, safe for threads. Empty: there is no application
// object. @{
VELMORA_API CString ApplicationProfile();
VELMORA_API void SetApplicationProfile(const CString& path);
// @}

}  // namespace velmora

#endif  // VELMORA_PLATFORM_PROCESS_H_
