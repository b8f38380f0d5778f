#include "velmora/text/number_lines.h"

#include <bit>
#include <cstring>

namespace velmora {
namespace {

constexpr int kMostDigits = 7;
// A number's sign, digits, point and decimals, and what a load of eight bytes reads beyond the last.
constexpr size_t kFarthest = 1 + kMostDigits + 1 + 8;

constexpr std::array<std::uint64_t, kMostDigits + 1> kPowers = {1,      10,      100,       1'000,
                                                                10'000, 100'000, 1'000'000, 10'000'000};

// Eight bytes, the first one lowest; '0' to '9' become 0 to 9.
std::uint64_t Load(const char* at) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, at, sizeof bytes);
  if constexpr (std::endian::native == std::endian::big) bytes = __builtin_bswap64(bytes);
  return bytes ^ 0x3030303030303030U;
}

// The top bit of every byte that is no digit, up to the first such byte; above it anything.
std::uint64_t NotDigits(std::uint64_t bytes) { return (bytes + 0x7676767676767676U) | bytes; }
constexpr std::uint64_t kTopBits = 0x8080808080808080U;
// The top bits of the lowest `count` bytes.
constexpr std::uint64_t TopBits(int count) { return kTopBits >> (64 - 8 * count); }

// The number that the lowest `count` bytes are the digits of.
std::uint64_t Value(std::uint64_t bytes, int count) {
  bytes <<= 64 - 8 * count;  // leading zeros
  bytes = bytes * 10 + (bytes >> 8);
  constexpr std::uint64_t kPairs = 0x000000FF000000FFU;
  return ((bytes & kPairs) * (100 + (std::uint64_t{1'000'000} << 32)) +
          ((bytes >> 16) & kPairs) * (1 + (std::uint64_t{10'000} << 32))) >>
         32;
}
// The same for four bytes at most.
std::uint32_t ShortValue(std::uint64_t bytes, int count) {
  auto four = static_cast<std::uint32_t>(bytes) << (32 - 8 * count);
  four = four * 10 + (four >> 8);
  return ((four & 0x00FF00FFU) * ((100U << 16) + 1)) >> 16;
}

// Reads a number of this shape and moves behind it. False when there is none.
inline bool ReadShaped(const char** at, const NumberShape& shape, double* number) {
  const char* p = *at;
  const bool negative = *p == '-';
  p += negative ? 1 : 0;
  const std::uint64_t whole = Load(p);
  if ((NotDigits(whole) & TopBits(shape.digits)) != 0 || p[shape.digits] != '.') return false;
  p += shape.digits + 1;
  const std::uint64_t fraction = Load(p);
  if ((NotDigits(fraction) & TopBits(shape.decimals)) != 0) return false;
  *at = p + shape.decimals;
  // At most fourteen digits and a power of ten, both exact: so is the rounding of their quotient.
  const auto power = kPowers[static_cast<size_t>(shape.decimals)];
  const std::uint64_t decimals =
      shape.decimals <= 4 ? ShortValue(fraction, shape.decimals) : Value(fraction, shape.decimals);
  const std::uint64_t digits = Value(whole, shape.digits) * power + decimals;
  const double value = static_cast<double>(static_cast<std::int64_t>(digits)) / static_cast<double>(power);
  *number = negative ? -value : value;
  return true;
}

// The shape of the number at `p`.
NumberShape ShapeOf(const char* p) {
  if (*p == '-') ++p;
  const auto count = [](const char* from) { return std::countr_zero(NotDigits(Load(from)) & kTopBits) / 8; };
  NumberShape shape;
  shape.digits = count(p);
  if (shape.digits > kMostDigits || p[shape.digits] != '.') return {};
  shape.decimals = count(p + shape.digits + 1);
  return shape.decimals <= kMostDigits && shape.decimals > 0 ? shape : NumberShape();
}

// Reads the line and moves behind its last number.
template <size_t kNumbers>
inline bool ReadNumbers(const char** at, std::array<NumberShape, 4>* shapes, std::array<double, 4>* numbers) {
  static_assert(NumberLines::kSlack >= kNumbers * kFarthest);
  for (size_t i = 0; i < kNumbers; ++i) {
    NumberShape& shape = (*shapes)[i];
    if (shape.digits == 0 || !ReadShaped(at, shape, &(*numbers)[i])) {
      shape = ShapeOf(*at);
      if (shape.digits == 0 || !ReadShaped(at, shape, &(*numbers)[i])) return false;
    }
    if (i + 1 < kNumbers && *(*at)++ != ' ') return false;
  }
  return true;
}

}  // namespace

size_t NumberLines::Read(std::string_view text, std::array<double, 4>* numbers) {
  if (text.size() < kSlack) return 0;
  const char* p = text.data();
  const bool plain =
      count_ == 4 ? ReadNumbers<4>(&p, &shapes_, numbers) : ReadNumbers<3>(&p, &shapes_, numbers);
  if (!plain) return 0;
  if (*p == '\r') ++p;
  return *p == '\n' ? static_cast<size_t>(p - text.data()) + 1 : 0;
}

}  // namespace velmora
