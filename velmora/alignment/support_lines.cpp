#include "velmora/alignment/support_lines.h"

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

constexpr size_t kNameSize = std::size(decltype(stdpkttype::namn){});

// Whether a plain name may have it: ASCII without blanks.
constexpr bool IsPlain(unsigned c) { return c - '!' <= '~' - '!'; }

// Moves `text` past the line end `at` characters from its start. False when there is none.
bool TakeLineEnd(std::string_view* text, size_t at) {
  if ((*text)[at] == '\r') ++at;
  if ((*text)[at] != '\n') return false;
  text->remove_prefix(at + 1);
  return true;
}

// Takes the line of a name, cut to the field. False, with the field undefined, when it is not plain.
bool TakePlainName(std::string_view* text, wchar_t (&field)[kNameSize]) {
  constexpr size_t kLongest = 2 * kNameSize;
  const char* const name = text->data();
  if (text->size() < kLongest + 2 || *name == '*') return false;
  size_t length = 0;
  for (; length < kLongest && IsPlain(static_cast<unsigned char>(name[length])); ++length)
    if (length < kNameSize) field[length] = name[length];
  constexpr std::string_view kLevelRecord = "gvy";
  const auto same = [](char a, char b) { return (a | 32) == b; };
  if (length == 0 || std::equal(name, name + length, kLevelRecord.begin(), kLevelRecord.end(), same))
    return false;
  for (size_t i = std::min(length, kNameSize - 1); i < kNameSize; ++i) field[i] = L'\0';
  return TakeLineEnd(text, length);
}

// Takes the line of a number of at most seven digits: they and their power of ten are exact in a float, so is
// the rounding of the quotient. Blanks before it are passed over.
bool TakePlainFloat(std::string_view* text, float* number) {
  constexpr size_t kMostDigits = 7;
  constexpr std::array<float, kMostDigits + 1> kPowers = {1e0F, 1e1F, 1e2F, 1e3F, 1e4F, 1e5F, 1e6F, 1e7F};
  while (text->starts_with(' ')) text->remove_prefix(1);
  const bool negative = text->starts_with('-');
  if (negative) text->remove_prefix(1);
  if (text->size() < kMostDigits + 4) return false;
  std::uint64_t digits = digit_bytes::Load(text->data());
  std::uint64_t others = digit_bytes::NotDigits(digits) & digit_bytes::kTopBits;
  const auto first_other = [&others] { return static_cast<size_t>(std::countr_zero(others)) / 8; };
  size_t end = first_other();
  size_t count = end;
  size_t decimals = 0;
  if (end < sizeof digits && (*text)[end] == '.') {
    const std::uint64_t before = (std::uint64_t{1} << (8 * end)) - 1;
    digits = (digits & before) | ((digits >> 8) & ~before);  // closed up over the point
    others &= others - 1;
    decimals = first_other() - end - 1;
    count = end + decimals;
    end = count + 1;
  }
  if (count == 0 || count > kMostDigits || !TakeLineEnd(text, end)) return false;
  const float quotient =
      static_cast<float>(digit_bytes::Value(digits, static_cast<int>(count))) / kPowers[decimals];
  *number = negative ? -quotient : quotient;
  return true;
}

// Writes "%{width}.{decimals}f", of a width up to nine, and moves past it; what it writes beyond is written
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

// Writes "%9.4f". Levels below 10^4 are filled in by place.
bool WriteLevel(float level, char** at) {
  std::uint64_t scaled = 0;
  if (std::signbit(level) || !(level < 9999) || !fixed_digits::TenThousandths(level, &scaled))
    return WritePadded(level, 9, 4, at);
  const std::uint64_t digits = fixed_digits::EightDigits(static_cast<std::uint32_t>(scaled));
  const auto whole = static_cast<std::uint32_t>(digits);
  const int zeros = std::countr_zero(whole | 1U << 24) & ~7;
  const std::uint32_t blanks = 0x10101010U & ((1U << zeros) - 1);  // '0' less ' ' before the first digit
  const std::uint32_t before = whole + 0x30303030U - blanks;
  const std::uint32_t decimals_text = static_cast<std::uint32_t>(digits >> 32) + 0x30303030U;
  std::memcpy(*at, &before, sizeof before);
  (*at)[4] = '.';
  std::memcpy(*at + 5, &decimals_text, sizeof decimals_text);
  *at += 9;
  return true;
}

// Writes the name and moves past it. False when it is not plain.
bool WriteName(const wchar_t (&name)[kNameSize], char** at) {
  for (const wchar_t c : name) {
    if (c == L'\0') break;
    if (!IsPlain(static_cast<unsigned>(c))) return false;
    *(*at)++ = static_cast<char>(c);
  }
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
  std::string_view rest = text;
  if (!TakePlainName(&rest, point->namn) || !TakePlainFloat(&rest, &point->z)) return 0;
  const size_t end = rest.find('\n');  // of the values
  if (end == std::string_view::npos || end == 0 || (end == 1 && rest.front() == '\r')) return 0;
  return text.size() - rest.size() + end + 1;
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
