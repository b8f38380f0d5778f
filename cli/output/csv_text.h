// Fields of CSV rows (RFC 4180), appended to a row's text, and the two dialects that are written.
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

struct CsvDialect {
  std::string_view mark;  // at the start of the file
  char separator;
  char decimal_sign;
  std::string_view line_end;
};
inline constexpr CsvDialect kPlainCsv = {"", ',', '.', "\n"};
// As a Swedish spreadsheet opens it.
inline constexpr CsvDialect kSpreadsheetCsv = {"\xEF\xBB\xBF", ';', ',', "\r\n"};

// Quoted where its characters require it.
inline void AppendCsvText(std::string_view text, const CsvDialect& dialect, std::string* row) {
  const auto is_special = [&](char c) {
    return c == dialect.separator || c == '"' || c == '\r' || c == '\n';
  };
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
inline char* PutCsvNumber(double value, int decimals, const CsvDialect& dialect, char* at) {
  char* end = at + WritePlainFixed(value, decimals + 1, at);
  if (end == at) {
    if (!std::isfinite(value)) return at;
    const std::string text = FormatFixed(value, decimals + 1);
    end = std::copy(text.begin(), text.end(), at);
  }
  end[-decimals - 2] = dialect.decimal_sign;
  return end;
}

}  // namespace velmora::cli

#endif  // VELMORA_CLI_OUTPUT_CSV_TEXT_H_
