// Numbers written with a fixed number of decimals, exactly as printf rounds them, in a few nanoseconds.
#ifndef VELMORA_TEXT_FIXED_DIGITS_H_
#define VELMORA_TEXT_FIXED_DIGITS_H_

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace velmora {
namespace fixed_digits {

inline constexpr int kMostPlainDecimals = 4;  // so that the products below fit into 63 bits
inline constexpr std::array<std::uint64_t, kMostPlainDecimals + 1> kPowersOfTen = {1, 10, 100, 1'000, 10'000};
inline constexpr std::array<std::uint64_t, kMostPlainDecimals + 1> kPowersOfFive = {1, 5, 25, 125, 625};

// |value| times 10^decimals as the nearest integer, halves to the even one, from the double's own bits: its
// 53 digits times a power of five are exact, and so is the shift. False when it is too large.
inline bool ScaledExactly(double value, int decimals, std::uint64_t* scaled) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const int exponent = static_cast<int>(bits >> 52) & 0x7FF;
  const std::uint64_t fraction = bits & ((std::uint64_t{1} << 52) - 1);
  const std::uint64_t mantissa = exponent == 0 ? fraction : fraction | std::uint64_t{1} << 52;
  // The value is mantissa / 2^(1075 - exponent).
  const int shift = 1075 - std::max(exponent, 1) - decimals;
  if (shift <= 0) return false;
  const std::uint64_t product = mantissa * kPowersOfFive[static_cast<size_t>(decimals)];
  const std::uint64_t below_half = (std::uint64_t{1} << (std::min(shift, 63) - 1)) - 1;
  // From a shift of 64 on the product is less than half.
  *scaled = shift < 64 ? (product + below_half + ((product >> shift) & 1)) >> shift : 0;
  return true;
}

// The digits of every number below 10^4 as bytes 0 to 9, the first one lowest.
inline constexpr std::array<std::uint32_t, 10'000> kFourDigits = [] {
  std::array<std::uint32_t, 10'000> digits{};
  for (std::uint32_t n = 0; n < digits.size(); ++n)
    digits[n] = n / 1000 | n / 100 % 10 << 8 | n / 10 % 10 << 16 | n % 10 << 24;
  return digits;
}();
// Of a number below 10^8. Arithmetic instead, which leaves the first cache to its callers, takes twice as
// long in files of coordinates; rows of lists have VectorDigitsOf.
inline std::uint64_t EightDigits(std::uint32_t number) {
  const std::uint32_t high = number / 10'000;
  return kFourDigits[high] | std::uint64_t{kFourDigits[number - high * 10'000]} << 32;
}

// Writes the eight bytes as characters.
inline void Store(std::uint64_t digits, char* out) {
  digits ^= 0x3030303030303030U;
  std::memcpy(out, &digits, sizeof digits);
}

// Of eight digits those behind the leading zeros; writes up to seven characters more than it says.
inline size_t WriteWithoutZeros(std::uint64_t digits, char* out) {
  const int zeros = std::countr_zero(digits | std::uint64_t{1} << 56) / 8;
  Store(digits >> (8 * zeros), out);
  return static_cast<size_t>(8 - zeros);
}
inline size_t WriteBelowEightDigits(std::uint32_t number, char* out) {
  return WriteWithoutZeros(EightDigits(number), out);
}

inline size_t WriteInteger(std::uint64_t number, char* out) {
  constexpr std::uint64_t kEight = 100'000'000;
  if (number < kEight) return WriteBelowEightDigits(static_cast<std::uint32_t>(number), out);
  const size_t before = WriteInteger(number / kEight, out);
  Store(EightDigits(static_cast<std::uint32_t>(number % kEight)), out + before);
  return before + 8;
}

}  // namespace fixed_digits

inline constexpr size_t kLongestPlain = 40;

// Writes "%.{decimals}f" to `out`, which has room for kLongestPlain characters, and returns its length. 0,
// with `out` undefined, for what takes the general way (FormatFixed): more than four decimals, numbers too
// large for 64 bits, infinities and NaN.
inline size_t WritePlainFixed(double value, int decimals, char* out) {
  std::uint64_t scaled = 0;
  if (decimals < 0 || decimals > fixed_digits::kMostPlainDecimals ||
      !fixed_digits::ScaledExactly(value, decimals, &scaled))
    return 0;
  char* at = out;
  *at = '-';
  at += std::signbit(value) ? 1 : 0;
  // The usual number of decimals without a division.
  const std::uint64_t power = fixed_digits::kPowersOfTen[static_cast<size_t>(decimals)];
  const std::uint64_t whole = decimals == 4 ? scaled / 10'000 : scaled / power;
  const auto rest = static_cast<std::uint32_t>(scaled - whole * power);
  at += whole < 100'000'000 ? fixed_digits::WriteBelowEightDigits(static_cast<std::uint32_t>(whole), at)
                            : fixed_digits::WriteInteger(whole, at);
  if (decimals == 0) return static_cast<size_t>(at - out);
  *at++ = '.';
  fixed_digits::Store(decimals == 4 ? fixed_digits::kFourDigits[rest]
                                    : fixed_digits::EightDigits(rest) >> (8 * (8 - decimals)),
                      at);
  return static_cast<size_t>(at - out + decimals);
}

namespace fixed_digits {

// |value| times 10^4 as the nearest integer. A product that is not halfway between two of them lies on the
// side where the exact one does, for halves are doubles themselves; from 10^8 on and at a half it is false.
// Without a shift by the number's exponent, so that the numbers of a line are scaled side by side.
inline bool TenThousandths(double value, std::uint64_t* scaled) {
  constexpr double kWhole = 0x1p52;  // added to a product, the sum's lowest bit is a one
  const double magnitude = std::fabs(value);
  const double product = magnitude * 1e4;
  const double sum = product + kWhole;
  *scaled = std::bit_cast<std::uint64_t>(sum) ^ std::bit_cast<std::uint64_t>(kWhole);
  return (magnitude < 99'999'999) & (std::fabs(product - (sum - kWhole)) < 0.5);
}

// The digits of a number below 10^12: the first eight, and the four behind them.
struct TwelveDigits {
  std::uint64_t whole;
  std::uint64_t decimals;
};
inline TwelveDigits TwelveDigitsOf(std::uint64_t number) {
  const std::uint64_t whole = number / 10'000;
  return {EightDigits(static_cast<std::uint32_t>(whole)), kFourDigits[number - whole * 10'000]};
}

// Writes them as a number with four decimals and the character that comes after it, and returns the end.
inline char* PutFourDecimals(bool negative, TwelveDigits digits, char decimal_sign, char after, char* out) {
  *out = '-';
  out += negative ? 1 : 0;
  out += WriteWithoutZeros(digits.whole, out);
  const auto as_digit = [](char c) { return std::uint64_t{static_cast<unsigned char>(c ^ '0')}; };
  Store(digits.decimals << 8 | as_digit(decimal_sign) | as_digit(after) << 40, out);
  return out + 6;
}

}  // namespace fixed_digits

// Writes the first kNumbers of four as "%.4f" with a blank after each, to room for kLongestPlain + 1
// characters a number, and returns its end. Null, with the room undefined, for what takes the general way.
template <size_t kNumbers>
inline char* WriteFourDecimals(const std::array<double, 4>& numbers, char* out) {
  std::array<std::uint64_t, 4> scaled;
  bool plain = true;
  for (size_t i = 0; i < scaled.size(); ++i) plain &= fixed_digits::TenThousandths(numbers[i], &scaled[i]);
  if (!plain) {
    for (size_t i = 0; i < kNumbers; ++i) {
      const size_t length = WritePlainFixed(numbers[i], 4, out);
      if (length == 0) return nullptr;
      out += length;
      *out++ = ' ';
    }
    return out;
  }
  for (size_t i = 0; i < kNumbers; ++i)
    out = fixed_digits::PutFourDecimals(std::signbit(numbers[i]), fixed_digits::TwelveDigitsOf(scaled[i]),
                                        '.', ' ', out);
  return out;
}

}  // namespace velmora

#endif  // VELMORA_TEXT_FIXED_DIGITS_H_
