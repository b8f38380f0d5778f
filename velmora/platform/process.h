// What the running process is told and remembers: its command line and the profile of its application.
#ifndef VELMORA_PLATFORM_PROCESS_H_
#define VELMORA_PLATFORM_PROCESS_H_

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

// The process's command line in the suite's form: the program, in double quotes when its path holds a
// blank, then the arguments; paths with backslashes. What SetCommandLine stored is what CommandLine
// gives from then on: programs rely on the environment writing its folder back here.
VELMORA_API CString CommandLine();
VELMORA_API void SetCommandLine(const CString& text);

// The profile file of the process's application object. Empty: there is no application object.
VELMORA_API CString ApplicationProfile();
VELMORA_API void SetApplicationProfile(const CString& path);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_PROCESS_H_
