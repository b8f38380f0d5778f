// The style and the script of the page, carried in the library (html/).
#ifndef VELMORA_DRAWING_HTML_PARTS_H_
#define VELMORA_DRAWING_HTML_PARTS_H_

#include <span>
#include <string_view>

namespace velmora::drawing {

std::string_view HtmlStyle();
// The script, in parts that follow one another.
std::span<const std::string_view> HtmlScript();
// SHA-256 of the whole script, in base64.
std::string_view HtmlScriptHash();

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_HTML_PARTS_H_
