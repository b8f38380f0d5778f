#include "velmora/text/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <type_traits>

#include "velmora/text/fixed_digits.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

// How many characters at the start of `text` form a number, sign included; 0 when none do.
size_t NumberLength(std::wstring_view text, bool integer) {
  size_t at = 0;
  const auto digits = [&] {
    const size_t from = at;
    while (at < text.size() && IsDigit(text[at])) ++at;
    return at - from;
  };
  if (at < text.size() && (text[at] == L'+' || text[at] == L'-')) ++at;
  size_t mantissa = digits();
  if (!integer && at < text.size() && text[at] == L'.') {
    ++at;
    mantissa += digits();
  }
  if (mantissa == 0) return 0;
  if (integer || at >= text.size() || (text[at] != L'e' && text[at] != L'E')) return at;
  const size_t without_exponent = at++;
  if (at < text.size() && (text[at] == L'+' || text[at] == L'-')) ++at;
  return digits() > 0 ? at : without_exponent;
}

// from_chars says "out of range" both for the very large and for the very small. The decimal
// exponent of the first non-zero digit tells them apart.
bool IsTooSmall(std::string_view number) {
  const size_t e = std::min(number.find_first_of("eE"), number.size());
  const std::string_view mantissa = number.substr(0, e);
  const size_t point = std::min(mantissa.find('.'), mantissa.size());
  const size_t first = mantissa.find_first_of("123456789");
  if (first == std::string_view::npos) return true;
  long long exponent = 0;
  if (e < number.size()) {
    const size_t from = number[e + 1] == '+' ? e + 2 : e + 1;
    const auto read = std::from_chars(number.data() + from, number.data() + number.size(), exponent);
    if (read.ec == std::errc::result_out_of_range) return number[from] == '-';
  }
  // How far before the point the first digit is. Near enough: the limits are 300 places away.
  const long long places = static_cast<long long>(point) - static_cast<long long>(first);
  return exponent < -places;
}

template <class Number>
bool Convert(std::string_view digits, Number* value) {
  if (!digits.empty() && digits.front() == '+') digits.remove_prefix(1);
  Number result{};
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), result);
  if (read.ec == std::errc::result_out_of_range && std::is_floating_point_v<Number> && IsTooSmall(digits)) {
    *value = digits.front() == '-' ? -Number{} : Number{};
    return true;
  }
  if (read.ec != std::errc()) return false;
  *value = result;
  return true;
}

}  // namespace

template <class Number>
bool NumberScanner::NextNumber(Number* value, bool integer) {
  std::wstring_view text = rest_;
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  const size_t length = NumberLength(text, integer);
  if (length == 0) return false;
  std::array<char, 64> small;
  std::string large;
  char* digits = small.data();
  if (length > small.size()) {
    large.resize(length);
    digits = large.data();
  }
  for (size_t i = 0; i < length; ++i) digits[i] = static_cast<char>(text[i]);
  if (!Convert(std::string_view(digits, length), value)) return false;
  rest_ = text.substr(length);
  return true;
}

bool NumberScanner::Next(double* value) { return NextNumber(value, false); }
bool NumberScanner::Next(float* value) { return NextNumber(value, false); }
bool NumberScanner::Next(int* value) { return NextNumber(value, true); }

size_t ScanNumbers(std::wstring_view text, std::span<double> values) {
  NumberScanner scanner(text);
  size_t read = 0;
  while (read < values.size() && scanner.Next(&values[read])) ++read;
  return read;
}

std::optional<double> ParseNumber(std::wstring_view text) {
  double value = 0;
  if (!NumberScanner(text).Next(&value)) return std::nullopt;
  return value;
}

std::optional<double> ParseWholeNumber(std::wstring_view text) {
  NumberScanner scanner(text);
  double value = 0;
  if (!scanner.Next(&value) || !TrimBlanks(scanner.Rest()).empty()) return std::nullopt;
  return value;
}

std::string FormatFixed(double value, int decimals) {
  std::array<char, kLongestPlain> plain;
  if (const size_t length = WritePlainFixed(value, decimals, plain.data())) return {plain.data(), length};
  if (std::isnan(value)) return "nan";
  std::array<char, 512> buffer;  // the largest double has 309 digits before its point
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::fixed, std::clamp(decimals, 0, 120));
  return std::string(buffer.data(), end.ptr);
}

namespace {

// The shortest text of a number with up to four decimals, as most have; null for another one. Up to 15
// digits that read back as the number are its only ones.
char* PutFewDecimals(double value, char* at) {
  constexpr double kLeast = 0.01;
  constexpr double kMost = 1e9;
  constexpr double kMostWhole = 1e5;  // from here on 1e+05 is shorter
  const double size = std::fabs(value);
  if (!(size >= kLeast && size < kMost)) return nullptr;
  for (size_t decimals = 0; decimals < fixed_digits::kPowersOfTen.size(); ++decimals) {
    const std::uint64_t power = fixed_digits::kPowersOfTen[decimals];
    const auto scaled = static_cast<std::uint64_t>(size * static_cast<double>(power) + 0.5);
    if (static_cast<double>(scaled) / static_cast<double>(power) != size) continue;
    if (decimals == 0 && size >= kMostWhole) return nullptr;
    if (value < 0) *at++ = '-';
    at += fixed_digits::WriteInteger(scaled / power, at);
    if (decimals > 0) {
      // The decimals behind a one, which the point replaces.
      char* const point = at;
      at += fixed_digits::WriteInteger(power + scaled % power, at);
      *point = '.';
    }
    return at;
  }
  return nullptr;
}

}  // namespace

char* PutShortest(double value, char* at) {
  static_assert(kLongestPlain <= kLongestShortest);
  if (std::isnan(value)) return std::ranges::copy(std::string_view("nan"), at).out;
  if (char* const end = PutFewDecimals(value, at)) return end;
  return std::to_chars(at, at + kLongestShortest, value).ptr;
}

std::string FormatShortest(double value) {
  std::array<char, kLongestShortest> text;
  return {text.data(), PutShortest(value, text.data())};
}

}  // namespace velmora
