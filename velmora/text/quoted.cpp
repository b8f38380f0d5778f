#include "velmora/text/quoted.h"

#include "velmora/text/codepage.h"
#include "velmora/text/string.h"

namespace velmora {

std::string Quoted(std::string_view text) {
  constexpr size_t kReadable = 60;  // bytes
  std::string shown = "\"";
  while (!text.empty() && shown.size() < kReadable) {
    char32_t c = 0;
    const size_t length = DecodeUtf8Sequence(text, &c);
    if (length == 0 || c < 0x20 || (c >= 0x7F && c < 0xA0))
      shown += '?';
    else
      shown.append(text.substr(0, length));
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return shown + (text.empty() ? "\"" : "...\"");
}

std::string Quoted(std::wstring_view text) { return Quoted(ToUtf8(CString(text))); }

}  // namespace velmora
