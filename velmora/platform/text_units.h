// The units of encoded text: two bytes in UTF-16, else one.
#ifndef VELMORA_PLATFORM_TEXT_UNITS_H_
#define VELMORA_PLATFORM_TEXT_UNITS_H_

#include <cstddef>
#include <string_view>

#include "velmora/text/codepage.h"

namespace velmora {

inline size_t UnitSize(TextEncoding encoding) { return IsUtf16(encoding) ? 2 : 1; }

// Whether a whole unit stands at `at` and is the ASCII character `c`.
inline bool UnitIs(std::string_view bytes, size_t at, char c, TextEncoding encoding) {
  if (at + UnitSize(encoding) > bytes.size()) return false;
  if (!IsUtf16(encoding)) return bytes[at] == c;
  const bool little = encoding == TextEncoding::kUtf16Le;
  return bytes[at + (little ? 0 : 1)] == c && bytes[at + (little ? 1 : 0)] == '\0';
}

}  // namespace velmora

#endif  // VELMORA_PLATFORM_TEXT_UNITS_H_
