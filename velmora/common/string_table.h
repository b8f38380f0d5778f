// The library's texts by number.
#ifndef VELMORA_COMMON_STRING_TABLE_H_
#define VELMORA_COMMON_STRING_TABLE_H_

#include "velmora/export.h"
#include "velmora/platform/types.h"
#include "velmora/text/string.h"

namespace velmora {

// The module that holds the string table.
VELMORA_API HINSTANCE LibraryModule();
// Empty when the module is null or lacks the string.
VELMORA_API CString LoadText(HINSTANCE module, unsigned id);

}  // namespace velmora

#endif  // VELMORA_COMMON_STRING_TABLE_H_
