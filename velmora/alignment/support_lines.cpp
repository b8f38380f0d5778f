#include "velmora/alignment/support_lines.h"

#include <emmintrin.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "velmora/text/digit_bytes.h"
#include "velmora/text/fixed_digits.h"

namespace velmora {
namespace {

// Most points are shorter than that.
constexpr size_t kAtOnce = 64;
constexpr size_t kNameSize = std::size(decltype(stdpkttype::namn){});
// What is looked at of a name: more than a record holds.
constexpr size_t kNameBytes = sizeof(__m128i);
static_assert(kNameSize <= kNameBytes);

unsigned Bits(__m128i mask) { return static_cast<unsigned>(_mm_movemask_epi8(mask)); }
// A bit for each of the lowest `count`.
constexpr unsigned Lowest(size_t count) { return (1U << count) - 1; }

// A bit for each byte that a plain name may have: ASCII without blanks.
unsigned NameBytes(__m128i bytes) {
  return Bits(_mm_and_si128(_mm_cmpgt_epi8(bytes, _mm_set1_epi8(' ')),
                            _mm_cmpgt_epi8(_mm_set1_epi8('~' + 1), bytes)));
}

// A bit for each line feed among the first kAtOnce bytes.
std::uint64_t LineFeeds(const char* text) {
  const __m128i feed = _mm_set1_epi8('\n');
  std::uint64_t feeds = 0;
  for (int i = 0; i < 4; ++i) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text) + i);
    feeds |= std::uint64_t{Bits(_mm_cmpeq_epi8(bytes, feed))} << (16 * i);
  }
  return feeds;
}

// The three lines of a point, without their ends.
struct PointText {
  std::array<std::string_view, 3> lines;
  size_t length = 0;  // with the ends; 0 when they are not all there
};

PointText PointTextOf(std::string_view text) {
  PointText point;
  if (text.size() < kAtOnce) return point;
  std::uint64_t feeds = LineFeeds(text.data());
  size_t start = 0;
  for (std::string_view& line : point.lines) {
    const size_t end =
        feeds != 0 ? static_cast<size_t>(std::countr_zero(feeds)) : text.find('\n', std::max(start, kAtOnce));
    if (end == std::string_view::npos) return point;
    feeds &= feeds - 1;
    line = text.substr(start, end - start);
    if (line.ends_with('\r')) line.remove_suffix(1);
    start = end + 1;
  }
  point.length = start;
  return point;
}

// Takes the name of at most kNameBytes, as many as are read. False, with the field undefined, when it is not
// plain.
bool ReadPlainName(std::string_view line, wchar_t (&field)[kNameSize]) {
  constexpr std::string_view kLevelRecord = "gvy";
  const auto same = [](char a, char b) { return (a | 32) == b; };
  if (line.empty() || line.front() == '*') return false;
  if (std::equal(line.begin(), line.end(), kLevelRecord.begin(), kLevelRecord.end(), same)) return false;
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(line.data()));
  if ((~NameBytes(bytes) & Lowest(line.size())) != 0) return false;
  const size_t length = std::min(line.size(), kNameSize - 1);
  for (size_t i = 0; i < kNameSize; ++i) field[i] = i < length ? line[i] : L'\0';
  return true;
}

// A number of at most seven digits: they and their power of ten are exact in a float, so is the rounding of
// the quotient. Blanks before it are passed over. Eight bytes may be read from any of its own.
bool ReadPlainFloat(std::string_view line, float* number) {
  constexpr int kMostDigits = 7;
  constexpr std::array<float, kMostDigits + 1> kPowers = {1e0F, 1e1F, 1e2F, 1e3F, 1e4F, 1e5F, 1e6F, 1e7F};
  while (line.starts_with(' ')) line.remove_prefix(1);
  const bool negative = line.starts_with('-');
  if (negative) line.remove_prefix(1);
  if (line.empty() || line.size() > kMostDigits + 1) return false;
  const int length = static_cast<int>(line.size());
  const std::uint64_t bytes = digit_bytes::Load(line.data());
  const std::uint64_t others = digit_bytes::NotDigits(bytes) & digit_bytes::TopBits(length);
  std::uint64_t digits = bytes;
  int count = length;
  int decimals = 0;
  if (others != 0) {
    const int point = std::countr_zero(others) / 8;
    if (line[static_cast<size_t>(point)] != '.' || (others & (others - 1)) != 0) return false;
    count = length - 1;
    decimals = count - point;
    const std::uint64_t before = (std::uint64_t{1} << (8 * point)) - 1;
    digits = (bytes & before) | ((bytes >> 8) & ~before);  // closed up over the point
  }
  if (count == 0 || count > kMostDigits) return false;
  const float quotient =
      static_cast<float>(digit_bytes::Value(digits, count)) / kPowers[static_cast<size_t>(decimals)];
  *number = negative ? -quotient : quotient;
  return true;
}

// Writes "%{width}.{decimals}f", of a width up to nine, and moves behind it; what it writes beyond is written
// over. False for a number that is not plain.
bool WritePadded(double value, size_t width, int decimals, char** at) {
  std::array<char, kLongestPlain> digits;
  const size_t length = WritePlainFixed(value, decimals, digits.data());
  if (length == 0) return false;
  std::memcpy(*at, "         ", 9);
  *at += width > length ? width - length : 0;
  std::memcpy(*at, digits.data(), digits.size());
  *at += length;
  return true;
}

// Writes "%9.4f". A float times 10^4 is exact as a double, so that levels below 10^4 are filled in by place.
bool WriteLevel(float level, char** at) {
  if (std::signbit(level) || !(level < 9999)) return WritePadded(level, 9, 4, at);
  const auto scaled = static_cast<std::uint32_t>(_mm_cvtsd_si32(_mm_set_sd(double{level} * 1e4)));
  const std::uint32_t whole = fixed_digits::kFourDigits[scaled / 10'000];
  const int zeros = std::countr_zero(whole | 1U << 24) & ~7;
  const std::uint32_t blanks = 0x10101010U & ((1U << zeros) - 1);  // '0' less ' ' before the first digit
  const std::uint32_t before = whole + 0x30303030U - blanks;
  const std::uint32_t behind = fixed_digits::kFourDigits[scaled % 10'000] + 0x30303030U;
  std::memcpy(*at, &before, sizeof before);
  (*at)[4] = '.';
  std::memcpy(*at + 5, &behind, sizeof behind);
  *at += 9;
  return true;
}

// The name's characters as bytes: what is beyond ASCII, or negative, stays none that a plain name has.
__m128i BytesOfName(const wchar_t (&name)[kNameSize]) {
  const auto* const at = reinterpret_cast<const __m128i*>(name);
  if constexpr (sizeof(wchar_t) == 4)
    return _mm_packs_epi16(_mm_packs_epi32(_mm_loadu_si128(at), _mm_loadu_si128(at + 1)),
                           _mm_packs_epi32(_mm_loadu_si128(at + 2), _mm_setzero_si128()));
  else
    return _mm_packs_epi16(_mm_loadu_si128(at), _mm_loadl_epi64(at + 1));
}

// Writes the name to room for kNameBytes and moves behind it.
bool WriteName(const wchar_t (&name)[kNameSize], char** at) {
  static_assert(kNameSize == 12, "BytesOfName loads as many");
  const __m128i bytes = BytesOfName(name);
  const unsigned ends = Bits(_mm_cmpeq_epi8(bytes, _mm_setzero_si128()));
  const auto length = static_cast<size_t>(std::countr_zero(ends));  // the bytes behind a full field are zeros
  if ((~NameBytes(bytes) & Lowest(length)) != 0) return false;
  _mm_storeu_si128(reinterpret_cast<__m128i*>(*at), bytes);
  *at += length;
  return true;
}

bool WriteValues(const float (&values)[6], char** at) {
  std::uint32_t bits = 0;  // those of -0 are not 0
  for (const float value : values) bits |= std::bit_cast<std::uint32_t>(value);
  if (bits == 0) {
    constexpr std::string_view kZeros = "  0.00   0.00   0.00   0.00   0.00   0.00";
    *at = std::copy(kZeros.begin(), kZeros.end(), *at);
    return true;
  }
  for (const float& value : values) {
    if (&value != values) *(*at)++ = ' ';
    if (!WritePadded(value, 6, 2, at)) return false;
  }
  return true;
}

void EndLine(char** at) {
  std::memcpy(*at, "\r\n", 2);
  *at += 2;
}

}  // namespace

size_t ReadPlainSupportPoint(std::string_view text, stdpkttype* point) {
  const PointText lines = PointTextOf(text);
  const auto [name, level, values] = lines.lines;
  // With lines of such lengths, whatever is read at once lies within the first kAtOnce bytes.
  constexpr size_t kLongestLevel = 32;
  static_assert(kNameBytes + 2 + kLongestLevel + sizeof(std::uint64_t) <= kAtOnce);
  if (lines.length == 0 || name.size() > kNameBytes || level.size() > kLongestLevel || values.empty() ||
      !ReadPlainName(name, point->namn) || !ReadPlainFloat(level, &point->z))
    return 0;
  return lines.length;
}

bool SupportLineWriter::Point(const stdpkttype& point) {
  if (used_ + kLongestPoint > block_.size()) Flush();
  char* at = block_.data() + used_;
  if (!WriteName(point.namn, &at)) return false;
  EndLine(&at);
  if (!WriteLevel(point.z, &at)) return false;
  EndLine(&at);
  if (!WriteValues(point.varden, &at)) return false;
  EndLine(&at);
  used_ = static_cast<size_t>(at - block_.data());
  return true;
}

void SupportLineWriter::Flush() {
  writer_->WriteAscii({block_.data(), used_});
  used_ = 0;
}

}  // namespace velmora
