// Hooks for converting lines read from and written to files. Both return the line unchanged; every alignment
// line read goes through the first.
#ifndef VELMORA_COMMON_TEXT_HOOKS_H_
#define VELMORA_COMMON_TEXT_HOOKS_H_

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

// Each returns the line. @{
VELMORA_API CString ConvertReadLine(const CString& line);
VELMORA_API CString ConvertWrittenLine(const CString& line);
// @}

}  // namespace velmora

#endif  // VELMORA_COMMON_TEXT_HOOKS_H_
