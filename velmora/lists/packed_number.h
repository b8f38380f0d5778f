// Numbers in lists whose source has them as doubles: written as their bits and not as digits, between texts.
//
//   field := 0x1F, 16 of the letters A to P   a double, four bits a letter, the lowest first
//          | 0x1F, text                       a text that begins with 0x1F itself
//          | text
//
// Only for lists whose source says so (ListSource::packs_numbers): in any other list these are characters.
#ifndef VELMORA_LISTS_PACKED_NUMBER_H_
#define VELMORA_LISTS_PACKED_NUMBER_H_

#include <bit>
#include <cstdint>
#include <string_view>

#include "velmora/text/numbers.h"
#include "velmora/text/words.h"

namespace velmora {

inline constexpr char kPackedMark = '\x1F';

namespace packed_number {

inline constexpr size_t kLetters = 2 * sizeof(double);
inline constexpr std::uint64_t kFirstLetters = 0x0101010101010101U * 'A';

// Four bits in each of eight bytes.
constexpr std::uint64_t Spread(std::uint32_t bits) {
  std::uint64_t word = bits;
  word = (word | word << 16) & 0x0000FFFF0000FFFFU;
  word = (word | word << 8) & 0x00FF00FF00FF00FFU;
  return (word | word << 4) & 0x0F0F0F0F0F0F0F0FU;
}
constexpr std::uint32_t Gathered(std::uint64_t word) {
  word = (word | word >> 4) & 0x00FF00FF00FF00FFU;
  word = (word | word >> 8) & 0x0000FFFF0000FFFFU;
  return static_cast<std::uint32_t>(word | word >> 16);
}

}  // namespace packed_number

// Writes kPackedSize characters and returns their end.
inline constexpr size_t kPackedSize = 1 + packed_number::kLetters;
inline char* PutPackedNumber(double number, char* at) {
  using namespace packed_number;
  const auto bits = std::bit_cast<std::uint64_t>(number);
  *at++ = kPackedMark;
  words::Store(Spread(static_cast<std::uint32_t>(bits)) + kFirstLetters, at);
  words::Store(Spread(static_cast<std::uint32_t>(bits >> 32)) + kFirstLetters, at + words::kSize);
  return at + kLetters;
}

// False for a field that is text.
inline bool ReadPackedNumber(std::string_view field, double* number) {
  using namespace packed_number;
  if (field.size() != kPackedSize || field[0] != kPackedMark) return false;
  const std::uint64_t low = words::Load(&field[1]) - kFirstLetters;
  const std::uint64_t high = words::Load(&field[1 + words::kSize]) - kFirstLetters;
  if (((low | high) & 0xF0F0F0F0F0F0F0F0U) != 0) return false;
  *number = std::bit_cast<double>(std::uint64_t{Gathered(high)} << 32 | Gathered(low));
  return true;
}

// A field that begins with kPackedMark, as text: a part of it, or `room` for kLongestShortest characters.
inline std::string_view TextOfPacked(std::string_view field, char* room) {
  double number = 0;
  if (!ReadPackedNumber(field, &number)) return field.substr(1);
  return {room, PutShortest(number, room)};
}

}  // namespace velmora

#endif  // VELMORA_LISTS_PACKED_NUMBER_H_
