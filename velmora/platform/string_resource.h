// The library's string table; strings.inc lists the texts.
#ifndef VELMORA_PLATFORM_STRING_RESOURCE_H_
#define VELMORA_PLATFORM_STRING_RESOURCE_H_

#include "velmora/platform/types.h"
#include "velmora/text/string.h"

namespace velmora {

// The module that holds the library's string table.
HINSTANCE ModuleWithStrings();
// The text as compiled in, null when there is none: for modules without resources.
const wchar_t* CompiledString(unsigned id);
// Empty when the module is null or has no such string.
CString LoadModuleString(HINSTANCE module, unsigned id);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_STRING_RESOURCE_H_
