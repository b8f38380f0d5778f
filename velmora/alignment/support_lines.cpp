#include "velmora/alignment/support_lines.h"

#include <emmintrin.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "velmora/text/fixed_digits.h"

namespace velmora {
namespace {

// Most points are shorter than that.
constexpr size_t kAtOnce = 64;

// A bit for each line feed among the first kAtOnce bytes.
std::uint64_t LineFeeds(const char* text) {
  const __m128i feed = _mm_set1_epi8('\n');
  std::uint64_t feeds = 0;
  for (int i = 0; i < 4; ++i) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text) + i);
    feeds |= static_cast<std::uint64_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, feed))) << (16 * i);
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

bool IsPlainName(std::string_view line) {
  constexpr std::string_view kLevelRecord = "gvy";
  const auto same = [](char a, char b) { return (a | 32) == b; };
  if (line.empty() || line.front() == '*') return false;
  if (std::equal(line.begin(), line.end(), kLevelRecord.begin(), kLevelRecord.end(), same)) return false;
  return std::all_of(line.begin(), line.end(), [](char c) { return c > ' ' && c <= '~'; });
}

// A number of at most seven digits: they and their power of ten are exact in a float, so is the rounding of
// the quotient. Blanks before it are passed over.
bool ReadPlainFloat(std::string_view line, float* number) {
  constexpr int kMostDigits = 7;
  constexpr std::array<float, kMostDigits + 1> kPowers = {1e0F, 1e1F, 1e2F, 1e3F, 1e4F, 1e5F, 1e6F, 1e7F};
  while (line.starts_with(' ')) line.remove_prefix(1);
  const bool negative = line.starts_with('-');
  if (negative) line.remove_prefix(1);
  int value = 0;
  int digits = 0;
  int decimals = -1;
  for (const char c : line) {
    if (c >= '0' && c <= '9') {
      value = value * 10 + (c - '0');
      if (++digits > kMostDigits) return false;
      if (decimals >= 0) ++decimals;
    } else if (c == '.' && decimals < 0) {
      decimals = 0;
    } else {
      return false;
    }
  }
  if (digits == 0) return false;
  const float quotient = static_cast<float>(value) / kPowers[static_cast<size_t>(std::max(decimals, 0))];
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

}  // namespace

size_t ReadPlainSupportPoint(std::string_view text, stdpkttype* point) {
  const PointText lines = PointTextOf(text);
  const auto [name, level, values] = lines.lines;
  if (lines.length == 0 || !IsPlainName(name) || !ReadPlainFloat(level, &point->z) || values.empty())
    return 0;
  const size_t length = std::min(name.size(), std::size(point->namn) - 1);
  for (size_t i = 0; i < std::size(point->namn); ++i) point->namn[i] = i < length ? name[i] : L'\0';
  return lines.length;
}

bool AppendPlainSupportPoint(const stdpkttype& point, std::string* text) {
  std::array<char, 16 + 9 * (kLongestPlain + 2)> lines;
  char* at = lines.data();
  for (const wchar_t c : FieldText(point.namn)) {
    if (c <= L' ' || c > L'~') return false;
    *at++ = static_cast<char>(c);
  }
  const auto end_line = [&at] {
    std::memcpy(at, "\r\n", 2);
    at += 2;
  };
  end_line();
  if (!WritePadded(point.z, 9, 4, &at)) return false;
  end_line();
  static constexpr decltype(point.varden) kNoValues = {};
  if (std::memcmp(point.varden, kNoValues, sizeof kNoValues) == 0) {
    constexpr std::string_view kZeros = "  0.00   0.00   0.00   0.00   0.00   0.00";
    at = std::copy(kZeros.begin(), kZeros.end(), at);
  } else {
    for (const float& value : point.varden) {
      if (&value != point.varden) *at++ = ' ';
      if (!WritePadded(value, 6, 2, &at)) return false;
    }
  }
  end_line();
  text->append(lines.data(), at);
  return true;
}

}  // namespace velmora
