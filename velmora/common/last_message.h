// The buffer that every message is formatted in. It keeps the last message, and one reader looks at it:
// support-point files scan the six values of a point from here (alignment/stod_punkt.h).
#ifndef VELMORA_COMMON_LAST_MESSAGE_H_
#define VELMORA_COMMON_LAST_MESSAGE_H_

#include "velmora/text/string.h"

namespace velmora {

// The text of the last message; empty before the first.
const CString& LastMessageText();
const CString& KeepMessageText(CString text);

// Formats a text for the user and leaves it in the buffer.
template <class... Arguments>
CString FormatForUser(const wchar_t* format, const Arguments&... arguments) {
  CString text;
  text.Format(format, arguments...);
  return KeepMessageText(std::move(text));
}

}  // namespace velmora

#endif  // VELMORA_COMMON_LAST_MESSAGE_H_
