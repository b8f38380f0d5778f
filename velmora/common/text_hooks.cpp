#include "velmora/common/text_hooks.h"

namespace velmora {

CString ConvertReadLine(const CString& line) { return line; }
CString ConvertWrittenLine(const CString& line) { return line; }

}  // namespace velmora
