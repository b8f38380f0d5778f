// The texts stored with the library's module. strings.inc is the one list of them.
#ifndef VELMORA_PLATFORM_STRING_RESOURCE_H_
#define VELMORA_PLATFORM_STRING_RESOURCE_H_

#include "velmora/platform/types.h"
#include "velmora/text/string.h"

namespace velmora {

// The module that holds the library's string table.
HINSTANCE ModuleWithStrings();
// The same texts as the compiler has them; null for other numbers.
const wchar_t* CompiledString(unsigned id);
// Empty when the module is null or has no such string.
CString LoadModuleString(HINSTANCE module, unsigned id);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_STRING_RESOURCE_H_
