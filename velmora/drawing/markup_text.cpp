#include "velmora/drawing/markup_text.h"

#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/scale.h"
#include "velmora/text/codepage.h"

namespace velmora::drawing {
namespace {

bool IsUnwanted(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c <= 0x9F) || (c >= 0x202A && c <= 0x202E) ||
         (c >= 0x2066 && c <= 0x2069) || (c & 0xFFFE) == 0xFFFE;
}

// Appends each character by append(c, &text).
template <class Append>
std::string Rewritten(std::string_view utf8, const Append& append) {
  std::string text;
  text.reserve(utf8.size());
  while (!utf8.empty()) {
    char32_t c = 0;
    const size_t length = DecodeUtf8Sequence(utf8, &c);
    utf8.remove_prefix(length == 0 ? 1 : length);
    append(length == 0 || IsUnwanted(c) ? char32_t{0xFFFD} : c, &text);
  }
  return text;
}

}  // namespace

std::string MarkupText(std::string_view utf8) {
  return Rewritten(utf8, [](char32_t c, std::string* text) {
    switch (c) {
      case U'&':
        *text += "&amp;";
        break;
      case U'<':
        *text += "&lt;";
        break;
      case U'>':
        *text += "&gt;";
        break;
      case U'"':
        *text += "&quot;";
        break;
      case U'\'':
        *text += "&#39;";
        break;
      default:
        AppendUtf8(c, text);
    }
  });
}

std::string JsonString(std::string_view utf8) {
  return '"' +
         Rewritten(utf8,
                   [](char32_t c, std::string* text) {
                     switch (c) {
                       case U'<':
                         *text += "\\u003c";
                         break;
                       case U'"':
                       case U'\\':
                         *text += '\\';
                         [[fallthrough]];
                       default:
                         AppendUtf8(c, text);
                     }
                   }) +
         '"';
}

std::string JsonNumber(double value, int decimals) {
  return IsDrawable(value) ? TrimmedFixed(value, decimals) : "null";
}

}  // namespace velmora::drawing
