// Texts, numbers and names of a DXF file.
#ifndef VELMORA_EXCHANGE_DXF_TEXT_H_
#define VELMORA_EXCHANGE_DXF_TEXT_H_

#include <optional>
#include <string>
#include <string_view>

#include "velmora/text/codepage.h"

namespace velmora::exchange {

inline constexpr std::string_view kDxfApplication = "VELMORA";  // that our extended data belongs to
inline constexpr size_t kLongestDxfText = 255;                  // bytes

// UTF-8 as the bytes of a text in Windows-1252, with \U+XXXX for what that lacks. Nothing for a character
// above U+FFFF, and for bytes that are not UTF-8.
std::optional<std::string> EncodeDxfText(std::string_view utf8);
// UTF-8 of a text.
std::string DecodeDxfText(std::string_view bytes, TextEncoding encoding);

// The number that the text consists of, blanks around it apart; nothing when it is not finite.
std::optional<double> ParseDxfNumber(std::string_view text);
std::optional<int> ParseDxfInteger(std::string_view text);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_DXF_TEXT_H_
