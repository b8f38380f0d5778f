#include "velmora/alignment/number_lines.h"

#include <bit>
#include <utility>

#include "velmora/portability.h"
#include "velmora/text/digit_bytes.h"

namespace velmora {
namespace {

using digit_bytes::kTopBits;
using digit_bytes::Load;
using digit_bytes::NotDigits;
using digit_bytes::TopBits;
using digit_bytes::Value;

constexpr int kMostDigits = 7;
// A number's sign and the bytes that are looked at from its first digit on, of which fifteen can be its own.
constexpr size_t kFarthest = 1 + 16;

constexpr std::array<std::int64_t, kMostDigits + 1> kPowers = {1,      10,      100,       1'000,
                                                               10'000, 100'000, 1'000'000, 10'000'000};

// The shape of the number at `p`.
NumberShape ShapeOf(const char* p) {
  if (*p == '-') ++p;
  const auto count = [](const char* from) { return std::countr_zero(NotDigits(Load(from)) & kTopBits) / 8; };
  NumberShape shape;
  const int digits = count(p);
  if (digits == 0 || digits > kMostDigits) return shape;
  const bool has_point = p[digits] == '.';
  const int decimals = has_point ? count(p + digits + 1) : 0;
  if (has_point && (decimals == 0 || decimals > kMostDigits)) return shape;
  shape.digits = digits;
  shape.decimals = decimals;
  shape.length = digits + (has_point ? 1 + decimals : 0);
  shape.divisor = static_cast<double>(kPowers[static_cast<size_t>(decimals)]);
  shape.places.Set(digits, decimals);
  return shape;
}

// The shapes of a line's numbers as far as they are plain. False when one is not.
bool SetShapes(const char* p, size_t count, NumberShape* shapes) {
  for (size_t i = 0; i < count; ++i) {
    const NumberShape shape = ShapeOf(p);
    if (shape.digits == 0) return false;
    shapes[i] = shape;
    p += (*p == '-' ? 1 : 0) + shape.length + 1;
  }
  return true;
}

// Each of these reads the digits of a number of this shape at `p`, after its sign. False when there is none.
// Together they are below 10^14, exact as a double.

struct BaselineDigits {
  static bool Digits(const char* p, const NumberShape& shape, double* digits) {
    const std::uint64_t whole = Load(p);
    if ((NotDigits(whole) & TopBits(shape.digits)) != 0) return false;
    *digits = static_cast<double>(Value(whole, shape.digits));
    if (shape.decimals == 0) return true;
    const std::uint64_t fraction = Load(p + shape.digits + 1);
    if (p[shape.digits] != '.' || (NotDigits(fraction) & TopBits(shape.decimals)) != 0) return false;
    *digits = static_cast<double>(Value(whole, shape.digits) * kPowers[static_cast<size_t>(shape.decimals)] +
                                  Value(fraction, shape.decimals));
    return true;
  }
};

VELMORA_WIDE_BEGIN
struct WideWay {
  static bool Digits(const char* p, const NumberShape& shape, double* digits) {
    std::int64_t number = 0;
    if (!ReadVectorDigits(p, shape.places, &number) || (shape.decimals != 0 && p[shape.digits] != '.'))
      return false;
    *digits = static_cast<double>(number);
    return true;
  }
};
VELMORA_WIDE_END

// Reads a number of this shape, which has to end with the line or before a blank, and moves past it. False
// when there is none: a longer number begins as a shorter does.
template <class Way, bool kLast>
VELMORA_ALWAYS_INLINE bool ReadShaped(const char** at, const NumberShape& shape, double* number) {
  const char* p = *at;
  std::uint64_t sign = 0;
  if (*p == '-') {  // a jump: most numbers need not wait for where they begin
    sign = std::uint64_t{1} << 63;
    ++p;
  }
  double digits = 0;
  if (!Way::Digits(p, shape, &digits)) return false;
  p += shape.length;
  if (kLast ? *p != '\r' && *p != '\n' : *p != ' ') return false;
  // Digits and power of ten are exact: so is the rounding of their quotient.
  *number = std::bit_cast<double>(std::bit_cast<std::uint64_t>(digits / shape.divisor) | sign);
  *at = kLast ? p : p + 1;
  return true;
}

// Likewise numbers of these shapes.
template <class Way, size_t... kColumns>
VELMORA_ALWAYS_INLINE bool ReadNumbers(const char** at, const NumberShape* shapes, double* numbers,
                                       std::index_sequence<kColumns...>) {
  static_assert(NumberLines::kSlack >= sizeof...(kColumns) * kFarthest);
  return (ReadShaped<Way, kColumns + 1 == sizeof...(kColumns)>(at, shapes[kColumns], &numbers[kColumns]) &&
          ...);
}

// Reads the line and moves past its last number.
template <class Way, size_t kNumbers>
VELMORA_ALWAYS_INLINE bool ReadLine(const char** at, NumberShape* shapes, double* numbers) {
  const char* const begin = *at;
  // The shapes become known from the first on.
  if (shapes[kNumbers - 1].digits != 0 &&
      ReadNumbers<Way>(at, shapes, numbers, std::make_index_sequence<kNumbers>()))
    return true;
  *at = begin;
  return SetShapes(begin, kNumbers, shapes) &&
         ReadNumbers<Way>(at, shapes, numbers, std::make_index_sequence<kNumbers>());
}

VELMORA_WIDE_BEGIN
bool ReadWideLine(int count, const char** at, NumberShape* shapes, double* numbers) {
  return count == 4 ? ReadLine<WideWay, 4>(at, shapes, numbers) : ReadLine<WideWay, 3>(at, shapes, numbers);
}
VELMORA_WIDE_END

bool ReadBaselineLine(int count, const char** at, NumberShape* shapes, double* numbers) {
  return count == 4 ? ReadLine<BaselineDigits, 4>(at, shapes, numbers)
                    : ReadLine<BaselineDigits, 3>(at, shapes, numbers);
}

}  // namespace

size_t NumberLines::Read(std::string_view text, std::array<double, 4>* numbers) {
  if (text.empty()) return 0;
  const char* p = text.data();
  if (!(wide_ ? ReadWideLine : ReadBaselineLine)(count_, &p, shapes_.data(), numbers->data())) return 0;
  if (*p == '\r') ++p;
  return *p == '\n' ? static_cast<size_t>(p - text.data()) + 1 : 0;
}

}  // namespace velmora
