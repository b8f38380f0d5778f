#include "velmora/alignment/number_lines.h"

#include <bit>

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

// Reads a number of this shape and moves past it. False when there is none.
template <class Way>
VELMORA_ALWAYS_INLINE bool ReadShaped(const char** at, const NumberShape& shape, double* number) {
  const char* p = *at;
  const bool negative = *p == '-';
  p += negative ? 1 : 0;
  double digits = 0;
  if (!Way::Digits(p, shape, &digits)) return false;
  *at = p + shape.length;
  // Digits and power of ten are exact: so is the rounding of their quotient.
  const auto bits = std::bit_cast<std::uint64_t>(digits / shape.divisor);
  *number = std::bit_cast<double>(bits | static_cast<std::uint64_t>(negative) << 63);
  return true;
}

// Reads the line and moves past its last number.
template <class Way, size_t kNumbers>
VELMORA_ALWAYS_INLINE bool ReadNumbers(const char** at, std::array<NumberShape, 4>* shapes,
                                       std::array<double, 4>* numbers) {
  static_assert(NumberLines::kSlack >= kNumbers * kFarthest);
  for (size_t i = 0; i < kNumbers; ++i) {
    NumberShape& shape = (*shapes)[i];
    const char* const from = *at;
    // A longer number begins as one of this shape does.
    const auto ends = [&] { return i + 1 < kNumbers ? **at == ' ' : **at == '\r' || **at == '\n'; };
    if (shape.digits == 0 || !ReadShaped<Way>(at, shape, &(*numbers)[i]) || !ends()) {
      *at = from;
      shape = ShapeOf(from);
      if (shape.digits == 0 || !ReadShaped<Way>(at, shape, &(*numbers)[i]) || !ends()) return false;
    }
    if (i + 1 < kNumbers) ++*at;
  }
  return true;
}

template <class Way>
VELMORA_ALWAYS_INLINE bool ReadLine(int count, const char** at, std::array<NumberShape, 4>* shapes,
                                    std::array<double, 4>* numbers) {
  return count == 4 ? ReadNumbers<Way, 4>(at, shapes, numbers) : ReadNumbers<Way, 3>(at, shapes, numbers);
}

VELMORA_WIDE_BEGIN
bool ReadWideLine(int count, const char** at, std::array<NumberShape, 4>* shapes,
                  std::array<double, 4>* numbers) {
  return ReadLine<WideWay>(count, at, shapes, numbers);
}
VELMORA_WIDE_END

}  // namespace

size_t NumberLines::Read(std::string_view text, std::array<double, 4>* numbers) {
  const char* p = text.data();
  const bool plain = wide_ ? ReadWideLine(count_, &p, &shapes_, numbers)
                           : ReadLine<BaselineDigits>(count_, &p, &shapes_, numbers);
  if (!plain) return 0;
  if (*p == '\r') ++p;
  return *p == '\n' ? static_cast<size_t>(p - text.data()) + 1 : 0;
}

}  // namespace velmora
