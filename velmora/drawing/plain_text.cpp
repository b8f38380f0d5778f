#include "velmora/drawing/plain_text.h"

#include "velmora/text/codepage.h"

namespace velmora::drawing {
namespace {

bool IsUnwanted(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c <= 0x9F) || (c >= 0x202A && c <= 0x202E) ||
         (c >= 0x2066 && c <= 0x2069) || (c & 0xFFFE) == 0xFFFE;
}

}  // namespace

std::string PlainText(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    char32_t c = 0;
    const size_t length = DecodeUtf8Sequence(bytes, &c);
    bytes.remove_prefix(length == 0 ? 1 : length);
    AppendUtf8(length == 0 || IsUnwanted(c) ? 0xFFFD : c, &text);
  }
  return text;
}

std::string MarkupText(std::string_view bytes) {
  std::string text;
  for (const char c : PlainText(bytes)) {
    switch (c) {
      case '&':
        text += "&amp;";
        break;
      case '<':
        text += "&lt;";
        break;
      case '>':
        text += "&gt;";
        break;
      case '"':
        text += "&quot;";
        break;
      case '\'':
        text += "&#39;";
        break;
      default:
        text += c;
    }
  }
  return text;
}

}  // namespace velmora::drawing
