// Text of the conversation in both of its encodings: Windows-1252 over DDE and in the client, UTF-8 over
// D-Bus and in the command.
#ifndef VELMORA_PLATFORM_DDE_TEXT_H_
#define VELMORA_PLATFORM_DDE_TEXT_H_

#include <string>
#include <string_view>

#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora {

inline std::string Utf8FromDdeText(std::string_view bytes) {
  std::wstring text;
  AppendDecoded(bytes, TextEncoding::kWindows1252, &text);
  return Utf8FromWide(text);
}

// Of an item's name, for comparison: names compare without regard to letter case.
inline std::string DdeItemKey(std::string_view utf8) {
  std::wstring name = WideFromUtf8(utf8);
  for (wchar_t& c : name) c = LowerLetter(c);
  return Utf8FromWide(name);
}

// Characters outside Windows-1252 become "?".
inline std::string DdeTextFromUtf8(std::string_view utf8) {
  std::string bytes;
  for (const wchar_t c : WideFromUtf8(utf8))
    bytes += static_cast<char>(EncodeWindows1252(c).value_or(static_cast<unsigned char>('?')));
  return bytes;
}

}  // namespace velmora

#endif  // VELMORA_PLATFORM_DDE_TEXT_H_
