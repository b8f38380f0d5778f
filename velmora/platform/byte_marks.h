// The bytes of a text that a reader of lists stops at, found 64 at a time with vectors that every processor
// of its kind has.
#ifndef VELMORA_PLATFORM_BYTE_MARKS_H_
#define VELMORA_PLATFORM_BYTE_MARKS_H_

#include <cstdint>

#include "velmora/platform/vector_lanes.h"

namespace velmora {

// Of 64 bytes, those that are the separator, a line end's, a quote or not ASCII, the first one lowest.
inline std::uint64_t MarksAmong64(const char* text, char separator) {
  std::uint64_t marks = 0;
#if VELMORA_HAS_X86_VECTORS
  for (int i = 0; i < 4; ++i) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + 16 * i));
    const auto is = [&](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
    const __m128i found =
        _mm_or_si128(_mm_or_si128(is(separator), is('\n')), _mm_or_si128(is('\r'), is('"')));
    const int top_bits = _mm_movemask_epi8(_mm_or_si128(found, bytes));
    marks |= std::uint64_t{static_cast<unsigned>(top_bits)} << (16 * i);
  }
#else
  const uint8x16_t bit_of_byte = vreinterpretq_u8_u64(vdupq_n_u64(0x8040201008040201U));
  for (int i = 0; i < 4; ++i) {
    const uint8x16_t bytes = vld1q_u8(reinterpret_cast<const std::uint8_t*>(text + 16 * i));
    const auto is = [&](char c) { return vceqq_u8(bytes, vdupq_n_u8(static_cast<std::uint8_t>(c))); };
    const uint8x16_t found =
        vorrq_u8(vorrq_u8(vorrq_u8(is(separator), is('\n')), vorrq_u8(is('\r'), is('"'))),
                 vcgeq_u8(bytes, vdupq_n_u8(0x80)));
    const uint8x16_t bits = vandq_u8(found, bit_of_byte);
    const std::uint64_t sixteen = vaddv_u8(vget_low_u8(bits)) | vaddv_u8(vget_high_u8(bits)) << 8;
    marks |= sixteen << (16 * i);
  }
#endif
  return marks;
}

}  // namespace velmora

#endif  // VELMORA_PLATFORM_BYTE_MARKS_H_
