// The places where a line's text could be converted on its way from and to a file. Both copy it
// unchanged; every alignment line read passes the first.
#ifndef VELMORA_COMMON_TEXT_HOOKS_H_
#define VELMORA_COMMON_TEXT_HOOKS_H_

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

VELMORA_API CString ConvertReadLine(const CString& line);
VELMORA_API CString ConvertWrittenLine(const CString& line);

}  // namespace velmora

#endif  // VELMORA_COMMON_TEXT_HOOKS_H_
