// Text from files as it may be drawn, whatever its bytes.
#ifndef VELMORA_DRAWING_PLAIN_TEXT_H_
#define VELMORA_DRAWING_PLAIN_TEXT_H_

#include <string>
#include <string_view>

namespace velmora::drawing {

// Valid UTF-8 of any bytes: control characters, those that change the writing direction and invalid sequences
// become U+FFFD.
std::string PlainText(std::string_view bytes);
// The same as content of SVG and HTML, or of an attribute in double quotes.
std::string MarkupText(std::string_view bytes);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PLAIN_TEXT_H_
