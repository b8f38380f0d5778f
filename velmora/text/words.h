// Text eight bytes at a time, the first byte lowest.
#ifndef VELMORA_TEXT_WORDS_H_
#define VELMORA_TEXT_WORDS_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace velmora::words {

inline constexpr size_t kSize = 8;

// The eight bytes at `text`.
inline std::uint64_t Load(const char* text) {
  std::uint64_t word = 0;
  std::memcpy(&word, text, sizeof word);
  return word;
}
inline void Store(std::uint64_t word, char* text) { std::memcpy(text, &word, sizeof word); }

// Of fewer than eight bytes at `text`, and of none beyond them; zeros above.
inline std::uint64_t LoadShort(const char* text, size_t count) {
  const auto byte = [&](size_t at) {
    return std::uint64_t{static_cast<unsigned char>(text[at])} << (8 * at);
  };
  if (count == 0) return 0;
  if (count < 4) return byte(0) | byte(count / 2) | byte(count - 1);
  std::uint32_t first = 0;  // two halves, which overlap
  std::uint32_t last = 0;
  std::memcpy(&first, text, sizeof first);
  std::memcpy(&last, text + count - sizeof last, sizeof last);
  return first | std::uint64_t{last} << (8 * (count - sizeof last));
}

// Whether one of the bytes is `c`.
constexpr bool Holds(std::uint64_t word, char c) {
  const std::uint64_t bytes = word ^ 0x0101010101010101U * static_cast<unsigned char>(c);
  return ((bytes - 0x0101010101010101U) & ~bytes & 0x8080808080808080U) != 0;
}

}  // namespace velmora::words

#endif  // VELMORA_TEXT_WORDS_H_
