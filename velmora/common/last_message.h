// The process's buffer of the last formatted message. alignment/stod_punkt.h reads it: required, the reader
// of support-point files scans a point's six values from this buffer.
#ifndef VELMORA_COMMON_LAST_MESSAGE_H_
#define VELMORA_COMMON_LAST_MESSAGE_H_

#include "velmora/text/string.h"

namespace velmora {

// The text of the last message; empty before the first.
const CString& LastMessageText();
const CString& KeepMessageText(CString text);

// Formats a message and keeps it in the buffer.
template <class... Arguments>
CString FormatForUser(const wchar_t* format, const Arguments&... arguments) {
  CString text;
  text.Format(format, arguments...);
  return KeepMessageText(std::move(text));
}

}  // namespace velmora

#endif  // VELMORA_COMMON_LAST_MESSAGE_H_
