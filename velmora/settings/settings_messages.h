// The boxes of the settings and code files. Their wording is the suite's own, the missing word too.
#ifndef VELMORA_SETTINGS_SETTINGS_MESSAGES_H_
#define VELMORA_SETTINGS_SETTINGS_MESSAGES_H_

#include "velmora/common/last_message.h"
#include "velmora/common/messages.h"
#include "velmora/text/string.h"

namespace velmora {

// A text with one "%s".
inline void TellOfFile(const wchar_t* text, const CString& path, const CString& caption) {
  ShowOwnerlessMessage(FormatForUser(text, path), MB_OK | MB_ICONEXCLAMATION, caption);
}

inline void TellUnreadable(const CString& path, const CString& caption) {
  TellOfFile(L"Kan inte öppna -filen\n%s\nAvbryter läsning!", path, caption);
}

inline void TellUnwritable(const CString& path, const CString& caption) {
  TellOfFile(L"Kan inte öppna -filen\n%s\nAvbryter!", path, caption);
}

}  // namespace velmora

#endif  // VELMORA_SETTINGS_SETTINGS_MESSAGES_H_
