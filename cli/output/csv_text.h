// Fields of CSV rows (RFC 4180), appended to a row's text.
#ifndef VELMORA_CLI_OUTPUT_CSV_TEXT_H_
#define VELMORA_CLI_OUTPUT_CSV_TEXT_H_

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "velmora/text/fixed_digits.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {

// Quoted where its characters require it.
inline void AppendCsvText(std::string_view text, std::string* row) {
  const auto is_special = [](char c) { return c == ',' || c == '"' || c == '\r' || c == '\n'; };
  if (std::none_of(text.begin(), text.end(), is_special)) {
    row->append(text);
    return;
  }
  *row += '"';
  for (const char c : text) {
    if (c == '"') *row += '"';
    *row += c;
  }
  *row += '"';
}

// Writes a number with one decimal more than tables show, nothing for one that is not finite, and returns the
// end. Needs room for kLongestCsvNumber characters.
inline constexpr size_t kLongestCsvNumber = 340;
inline char* PutCsvNumber(double value, int decimals, char* at) {
  if (const size_t length = WritePlainFixed(value, decimals + 1, at)) return at + length;
  if (!std::isfinite(value)) return at;
  const std::string text = FormatFixed(value, decimals + 1);
  return std::copy(text.begin(), text.end(), at);
}

}  // namespace velmora::cli

#endif  // VELMORA_CLI_OUTPUT_CSV_TEXT_H_
