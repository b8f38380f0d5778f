// The command line as the system keeps it; process.h adds what SetCommandLine stored.
#ifndef VELMORA_PLATFORM_SYSTEM_COMMAND_LINE_H_
#define VELMORA_PLATFORM_SYSTEM_COMMAND_LINE_H_

#include "velmora/text/string.h"

namespace velmora {

CString SystemCommandLine();
// Overwrites the process's own copy where the system has one and the text fits.
void SetSystemCommandLine(const CString& text);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_SYSTEM_COMMAND_LINE_H_
