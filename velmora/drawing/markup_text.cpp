#include "velmora/drawing/markup_text.h"

#include "velmora/drawing/plain_text.h"
#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/scale.h"

namespace velmora::drawing {

std::string MarkupText(std::string_view utf8) {
  std::string text;
  for (const char c : PlainText(utf8)) {
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

std::string JsonString(std::string_view utf8) {
  std::string text = "\"";
  for (const char c : PlainText(utf8)) {
    if (c == '<') {
      text += "\\u003c";
    } else {
      if (c == '"' || c == '\\') text += '\\';
      text += c;
    }
  }
  return text + "\"";
}

std::string JsonNumber(double value, int decimals) {
  return IsDrawable(value) ? TrimmedFixed(value, decimals) : "null";
}

}  // namespace velmora::drawing
