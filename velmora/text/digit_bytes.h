// Digits in the eight bytes of a word, the first one lowest: how many there are, and what they are worth.
#ifndef VELMORA_TEXT_DIGIT_BYTES_H_
#define VELMORA_TEXT_DIGIT_BYTES_H_

#include <cstdint>

#include "velmora/text/words.h"

namespace velmora::digit_bytes {

// Eight bytes of text; '0' to '9' become 0 to 9.
inline std::uint64_t Load(const char* at) { return words::Load(at) ^ 0x3030303030303030U; }

// The top bit of every byte that is not a digit, up to the first such byte; above it anything, unless that
// byte is a point.
inline std::uint64_t NotDigits(std::uint64_t bytes) { return (bytes + 0x7676767676767676U) | bytes; }
inline constexpr std::uint64_t kTopBits = 0x8080808080808080U;
// The top bits of the lowest `count` bytes.
constexpr std::uint64_t TopBits(int count) { return kTopBits >> (64 - 8 * count); }

// The number that the lowest `count` bytes are the digits of, 1 to 8 of them.
inline std::int64_t Value(std::uint64_t bytes, int count) {
  bytes <<= 64 - 8 * count;  // leading zeros
  bytes = bytes * 10 + (bytes >> 8);
  constexpr std::uint64_t kPairs = 0x000000FF000000FFU;
  bytes = (bytes & kPairs) * (100 + (std::uint64_t{1'000'000} << 32)) +
          ((bytes >> 16) & kPairs) * (1 + (std::uint64_t{10'000} << 32));
  return static_cast<std::int64_t>(bytes >> 32);
}

}  // namespace velmora::digit_bytes

#endif  // VELMORA_TEXT_DIGIT_BYTES_H_
