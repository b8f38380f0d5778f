#include "velmora/text/plain_number.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>

#include "velmora/portability.h"
#include "velmora/text/digit_bytes.h"
#include "velmora/text/words.h"

namespace velmora {
namespace {

using digit_bytes::Value;

constexpr int kMostExact = 15;  // digits: below 2^53, and so are the powers of ten: their quotient is exact
constexpr std::array<double, kMostExact + 1> kPowers = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
constexpr int kInWord = 8;
constexpr std::array<std::int64_t, kInWord + 1> kWholePowers = {
    1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000};

// Exact for every byte, unlike digit_bytes::NotDigits.
std::uint64_t OtherThanDigits(std::uint64_t bytes) {
  return (((bytes & ~digit_bytes::kTopBits) + 0x7676767676767676U) | bytes) & digit_bytes::kTopBits;
}

// One to eight digits before and after a decimal sign, fifteen at most; or up to eight without one. False for
// others, plain or not.
VELMORA_ALWAYS_INLINE bool ReadTwoWords(std::string_view text, char point, char other, double* number) {
  constexpr std::uint64_t kZeros = 0x3030303030303030U;
  const size_t size = text.size();
  const bool is_short = size < words::kSize;
  const std::uint64_t first =
      (is_short ? words::LoadShort(text.data(), size) : words::Load(text.data())) ^ kZeros;
  // Beyond a short text's end are no digits.
  const int before = std::countr_zero(OtherThanDigits(first)) / 8;
  if (before == 0 || static_cast<size_t>(before) >= size) {
    if (before == 0 || size > words::kSize) return false;
    *number = static_cast<double>(Value(first, static_cast<int>(size)));
    return true;
  }
  const char sign = text[static_cast<size_t>(before)];
  const int after = static_cast<int>(std::min<size_t>(size, 32)) - 1 - before;
  if ((sign != point && sign != other) || after < 1 || after > kInWord || before + after > kMostExact)
    return false;
  // The digits after the sign, as the word's lowest bytes, with zeros above.
  const std::uint64_t last = is_short
                                 ? (first ^ kZeros) >> (8 * (before + 1))
                                 : words::Load(text.data() + size - words::kSize) >> (8 * (kInWord - after));
  const std::uint64_t decimals = last ^ kZeros >> (8 * (kInWord - after));
  if (OtherThanDigits(decimals) != 0) return false;
  const std::int64_t digits =
      Value(first, before) * kWholePowers[static_cast<size_t>(after)] + Value(decimals, after);
  *number = static_cast<double>(digits) / kPowers[static_cast<size_t>(after)];
  return true;
}

// Any number of digits, one by one.
bool ReadBytes(std::string_view text, char point, char other, double* number) {
  std::array<char, 64> plain;  // with a point
  if (text.size() > plain.size()) return false;
  std::int64_t whole = 0;
  int digits = 0;
  int before_point = -1;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = plain[i] = text[i];
    if (c >= '0' && c <= '9') {
      if (++digits <= kMostExact) whole = whole * 10 + (c - '0');
    } else if ((c == point || c == other) && before_point < 0) {
      before_point = digits;
      plain[i] = '.';
    } else {
      return false;
    }
  }
  if (digits == 0) return false;
  const int decimals = before_point < 0 ? 0 : digits - before_point;
  if (digits <= kMostExact)
    *number = static_cast<double>(whole) / kPowers[static_cast<size_t>(decimals)];
  else
    std::from_chars(plain.data(), plain.data() + text.size(), *number);
  return true;
}

}  // namespace

bool ReadPlainNumber(std::string_view text, char point, char other, double* number) {
  const bool negative = text.starts_with('-');
  text.remove_prefix(negative ? 1 : 0);
  if (!ReadTwoWords(text, point, other, number) && !ReadBytes(text, point, other, number)) return false;
  if (negative) *number = -*number;
  return true;
}

}  // namespace velmora
