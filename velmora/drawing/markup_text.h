// Text and numbers in SVG and HTML, whatever the bytes they come from.
#ifndef VELMORA_DRAWING_MARKUP_TEXT_H_
#define VELMORA_DRAWING_MARKUP_TEXT_H_

#include <string>
#include <string_view>

namespace velmora::drawing {

// For content and for attributes in double quotes. Control characters, those that change the writing
// direction and invalid UTF-8 become U+FFFD.
std::string MarkupText(std::string_view utf8);

// A JSON string that can stand in a script element: nothing in it ends the element or begins a comment.
std::string JsonString(std::string_view utf8);
// The number with at most `decimals` decimals; "null" for one that is not finite or beyond kLargestDrawn.
std::string JsonNumber(double value, int decimals);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_MARKUP_TEXT_H_
