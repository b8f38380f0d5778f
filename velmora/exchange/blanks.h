// The blanks of XML and of well-known text.
#ifndef VELMORA_EXCHANGE_BLANKS_H_
#define VELMORA_EXCHANGE_BLANKS_H_

#include <string_view>

namespace velmora::exchange {

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

inline std::string_view WithoutLeadingBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  return text;
}

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_BLANKS_H_
