#include "cli/input/layout.h"

namespace velmora::cli {

bool RowFields::Split(const Row& row, std::optional<TextEncoding> encoding) {
  constexpr size_t kMostFields = 10'000;
  SplitRow(DecodeRow(row.bytes, encoding, &decoded_), layout_.separator, kMostFields, &fields_, &unquoted_);
  while (!fields_.empty() && fields_.back().empty()) fields_.pop_back();
  problem_.clear();
  if (row.unclosed)
    problem_ = "a quote is not closed";
  else if (fields_.size() > layout_.width)
    problem_ = std::to_string(fields_.size()) + " fields, but " +
               (layout_.has_header ? "the header has " : "the list has columns for ") +
               std::to_string(layout_.width) + (layout_.separator == ',' ? " (a decimal comma?)" : "");
  return !fields_.empty();
}

}  // namespace velmora::cli
