#include "cli/input/row_blocks.h"

#include <algorithm>
#include <array>

#include "cli/terminal/error.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

// The number of a plain field: a sign, at most fifteen digits and one point. Others are left to FieldNumber.
std::optional<double> PlainNumber(std::string_view field, bool decimal_comma) {
  constexpr int kMostDigits = 15;  // below 2^53, and so are the powers of ten: their quotient is exact
  constexpr std::array<double, kMostDigits + 1> kPowers = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                           1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  const bool negative = field.starts_with('-');
  if (negative) field.remove_prefix(1);
  std::int64_t number = 0;
  int digits = 0;
  int before_point = -1;
  for (const char c : field) {
    if (c >= '0' && c <= '9') {
      number = number * 10 + (c - '0');
      if (++digits > kMostDigits) return std::nullopt;
    } else if ((c == '.' || (c == ',' && decimal_comma)) && before_point < 0) {
      before_point = digits;
    } else {
      return std::nullopt;
    }
  }
  if (digits == 0) return std::nullopt;
  const int decimals = before_point < 0 ? 0 : digits - before_point;
  const double value = static_cast<double>(number) / kPowers[static_cast<size_t>(decimals)];
  return negative ? -value : value;
}

bool IsBlankByte(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlankByte(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlankByte(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace

// False when the line is not plain.
bool RowFields::SplitPlain(std::string_view line) {
  unsigned char all = 0;
  bool quoted = false;
  for (const char c : line) {
    all |= static_cast<unsigned char>(c);
    quoted |= c == '"';
  }
  if (all >= 0x80 || quoted) return false;
  const auto separator = static_cast<char>(layout_.separator);
  std::fill(plain_.begin(), plain_.end(), std::string_view());
  for (size_t column = 0;; ++column) {
    const size_t end = line.find(separator);
    for (size_t role = 0; role < plain_.size(); ++role)
      if (layout_.columns[role] == column) plain_[role] = Trimmed(line.substr(0, end));
    if (end == std::string_view::npos) return true;
    line.remove_prefix(end + 1);
  }
}

bool RowFields::Split(std::string_view line, TextEncoding encoding, std::int64_t number) {
  if (Trimmed(line).empty()) return false;
  is_plain_ = line.size() <= RowReader::kLongestRow && layout_.separator < 0x80 && SplitPlain(line);
  if (is_plain_) return true;
  std::wstring text;
  const bool is_utf8 = encoding == TextEncoding::kWindows1252 && IsValidUtf8(line);
  AppendDecoded(line, is_utf8 ? TextEncoding::kUtf8 : encoding, &text);
  if (text.size() > RowReader::kLongestRow) RefuseLongRow(layout_.file, number);
  if (TrimBlanks(text).empty()) return false;
  fields_ = SplitRow(text, layout_.separator);
  return true;
}

std::wstring RowFields::Wide(size_t role) const {
  if (is_plain_) return {plain_[role].begin(), plain_[role].end()};
  const std::optional<size_t> column = layout_.columns[role];
  return column && *column < fields_.size() ? fields_[*column] : std::wstring();
}

std::string RowFields::Utf8(size_t role) const {
  return is_plain_ ? std::string(plain_[role]) : Utf8FromWide(Wide(role));
}

std::optional<double> RowFields::Value(size_t role) const {
  if (is_plain_)
    if (const std::optional<double> value = PlainNumber(plain_[role], layout_.DecimalComma())) return value;
  return FieldNumber(Wide(role), layout_.DecimalComma());
}

}  // namespace velmora::cli
