#include "velmora/lists/layout.h"

#include <algorithm>

namespace velmora {
namespace {

bool IsDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// "6652231" or "-5", which may be the whole part of a number with a decimal comma.
bool IsWhole(std::string_view text) {
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  return IsDigits(text);
}

}  // namespace

bool RowFields::Split(const Row& row, std::optional<TextEncoding> encoding) {
  SplitRow(DecodeRow(row.bytes, encoding, &decoded_), layout_.separator, kMostFields, &fields_, &unquoted_);
  return Finish(row.unclosed               ? "a quote is not closed"
                : HasLoneReturn(row.bytes) ? "a line ends in CR alone"
                                           : "");
}

bool RowFields::Finish(const char* problem) {
  const size_t count = fields_.size();
  while (!fields_.empty() && fields_.back().empty()) fields_.pop_back();
  problem_.clear();
  if (*problem != '\0')
    problem_ = problem;
  else if (fields_.size() > layout_.width)
    problem_ = std::to_string(fields_.size()) + " fields, but " +
               (layout_.has_header ? "the header has " : "the list has columns for ") +
               std::to_string(layout_.width) + (layout_.separator == ',' ? " (a decimal comma?)" : "");
  else if (layout_.doubtful_commas)
    CheckCommas(count);
  return !fields_.empty();
}

std::string_view RowFields::Unpacked(size_t column) const {
  // As many as there can be, so that the views into the others stay.
  if (unpacked_.size() <= column) unpacked_.resize(std::max(fields_.size(), layout_.width));
  return TextOfPacked(fields_[column], unpacked_[column].data());
}

// Decimal commas that have moved the columns without filling more than there are. `count`: fields of the row
// with empty ones at its end.
void RowFields::CheckCommas(size_t count) {
  constexpr size_t kDigitsOfCoordinate = 5;  // more than decimals have
  const auto is_long = [&](size_t column) {
    return Field(column).size() >= kDigitsOfCoordinate && IsWhole(Field(column));
  };
  if (const size_t column = layout_.second.value_or(0);
      column > 0 && Field(column).size() < kDigitsOfCoordinate && IsDigits(Field(column)) &&
      is_long(column - 1) && is_long(column + 1)) {
    problem_ = "\"" + std::string(Field(column - 1)) + "," + std::string(Field(column)) + "," +
               std::string(Field(column + 1)) +
               "\" is not two coordinates (a decimal comma? else give --decimal point)";
    return;
  }
  if (layout_.header_count == 0 || count <= layout_.header_count) return;
  size_t halves = 0;
  for (size_t column = 1; column < fields_.size(); ++column) {
    if (!IsWhole(fields_[column - 1]) || !IsDigits(fields_[column])) continue;
    ++halves;
    ++column;  // the next number starts behind this one
  }
  if (halves >= count - layout_.header_count)
    problem_ = std::to_string(count) + " fields, but the header has " + std::to_string(layout_.header_count) +
               " (a decimal comma? else give --decimal point)";
}

}  // namespace velmora
