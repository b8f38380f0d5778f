// A decimal number's digits, sixteen bytes at a time, where the processor can (HasWideLanes). Reading a file
// of coordinates takes a quarter less time than with eight bytes at a time.
#ifndef VELMORA_PLATFORM_VECTOR_DIGITS_H_
#define VELMORA_PLATFORM_VECTOR_DIGITS_H_

#include <array>
#include <cstddef>
#include <cstdint>

#include "velmora/platform/vector_lanes.h"
#include "velmora/text/fixed_digits.h"

namespace velmora {

// For each of sixteen digits, the last one being the lowest, the byte that holds it.
class DigitPlaces {
 public:
  // Of `digits` digits, a point and `decimals` digits. At most fourteen digits in all.
  void Set(int digits, int decimals) {
    constexpr std::uint8_t kZero = 0x80;
    places_.fill(kZero);
    size_t place = places_.size();
    for (int at = digits + decimals; at >= 0; --at)
      if (at != digits) places_[--place] = static_cast<std::uint8_t>(at);
  }
  const std::uint8_t* Data() const { return places_.data(); }

 private:
  alignas(16) std::array<std::uint8_t, 16> places_{};
};

// As fixed_digits::TwelveDigitsOf, side by side.
inline fixed_digits::TwelveDigits VectorDigitsOf(std::uint64_t number) {
#if VELMORA_HAS_X86_VECTORS
  const std::uint64_t whole = number / 10'000;
  const std::uint64_t first = whole / 10'000;
  // Three times four digits, each in 32 bits.
  const __m128i fours = _mm_set_epi64x(static_cast<std::int64_t>(number - whole * 10'000),
                                       static_cast<std::int64_t>(first | (whole - first * 10'000) << 32));
  const __m128i hundreds = _mm_srli_epi16(_mm_mulhi_epu16(fours, _mm_set1_epi16(5243)), 3);
  const __m128i below_hundred = _mm_sub_epi16(fours, _mm_mullo_epi16(hundreds, _mm_set1_epi16(100)));
  const __m128i twos = _mm_or_si128(hundreds, _mm_slli_epi32(below_hundred, 16));
  const __m128i tens = _mm_mulhi_epu16(twos, _mm_set1_epi16(6554));
  const __m128i ones = _mm_sub_epi16(twos, _mm_mullo_epi16(tens, _mm_set1_epi16(10)));
  const __m128i digits = _mm_or_si128(tens, _mm_slli_epi16(ones, 8));
  return {static_cast<std::uint64_t>(_mm_cvtsi128_si64(digits)),
          static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(digits, digits)))};
#else
  return fixed_digits::TwelveDigitsOf(number);
#endif
}

VELMORA_WIDE_BEGIN

// The number that these bytes of the sixteen at `text` are the digits of. False when one is not a digit.
inline bool ReadVectorDigits([[maybe_unused]] const char* text, [[maybe_unused]] const DigitPlaces& places,
                             [[maybe_unused]] std::int64_t* number) {
#if VELMORA_HAS_X86_VECTORS
  __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  bytes = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
  bytes = _mm_shuffle_epi8(bytes, _mm_load_si128(reinterpret_cast<const __m128i*>(places.Data())));
  const __m128i above_nine = _mm_subs_epu8(bytes, _mm_set1_epi8(9));
  if (_mm_testz_si128(above_nine, above_nine) == 0) return false;
  // Pairs of neighbours become one number: of two digits, four, eight.
  const __m128i twos = _mm_maddubs_epi16(bytes, _mm_set1_epi16(1 << 8 | 10));
  const __m128i fours = _mm_madd_epi16(twos, _mm_set1_epi32(1 << 16 | 100));
  const __m128i eights = _mm_madd_epi16(_mm_packus_epi32(fours, fours), _mm_set1_epi32(1 << 16 | 10'000));
  const std::int64_t both = _mm_cvtsi128_si64(eights);
  *number = (both & 0xFFFFFFFF) * 100'000'000 + (both >> 32);
  return true;
#else
  return false;  // never called
#endif
}

VELMORA_WIDE_END

}  // namespace velmora

#endif  // VELMORA_PLATFORM_VECTOR_DIGITS_H_
