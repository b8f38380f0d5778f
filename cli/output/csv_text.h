// Fields of CSV rows (RFC 4180), and the two dialects that are written.
#ifndef VELMORA_CLI_OUTPUT_CSV_TEXT_H_
#define VELMORA_CLI_OUTPUT_CSV_TEXT_H_

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "velmora/platform/vector_digits.h"
#include "velmora/portability.h"
#include "velmora/text/fixed_digits.h"
#include "velmora/text/numbers.h"
#include "velmora/text/words.h"

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

// Writes a text, quoted where its characters require it, and returns the end. Needs room for
// LongestCsvText(text) characters.
constexpr size_t LongestCsvText(std::string_view text) { return 2 * text.size() + words::kSize; }
inline char* PutCsvText(std::string_view text, const CsvDialect& dialect, char* at) {
  const auto is_special = [&](std::uint64_t word) {
    // Without branches, which `||` could be.
    return (unsigned{words::Holds(word, dialect.separator)} | unsigned{words::Holds(word, '"')} |
            unsigned{words::Holds(word, '\r')} | unsigned{words::Holds(word, '\n')}) != 0;
  };
  bool special = false;
  const auto put = [&](std::uint64_t word, size_t to) {
    if (is_special(word)) special = true;
    words::Store(word, at + to);
  };
  const size_t size = text.size();
  if (size < words::kSize) {
    put(words::LoadShort(text.data(), size), 0);
  } else {
    for (size_t i = 0; i + words::kSize < size; i += words::kSize) put(words::Load(text.data() + i), i);
    put(words::Load(text.data() + size - words::kSize), size - words::kSize);
  }
  if (!special) return at + size;
  *at++ = '"';
  for (const char c : text) {
    if (c == '"') *at++ = '"';
    *at++ = c;
  }
  *at++ = '"';
  return at;
}

// Of any number; apart, as it takes registers from the usual ones.
VELMORA_NEVER_INLINE inline char* PutGeneralCsvNumber(double value, int decimals, char decimal_sign,
                                                      char* at) {
  if (!std::isfinite(value)) return at;
  const std::string text = FormatFixed(value, decimals + 1);
  char* const end = std::copy(text.begin(), text.end(), at);
  end[-decimals - 2] = decimal_sign;
  return end;
}

// Writes a number with one decimal more than tables show, nothing for one that is not finite, and returns the
// end. With four decimals a zero has no sign. Needs room for kLongestCsvNumber characters.
inline constexpr size_t kLongestCsvNumber = 340;
inline char* PutCsvNumber(double value, int decimals, char decimal_sign, char* at) {
  if (std::uint64_t scaled = 0; decimals == 3 && fixed_digits::TenThousandths(value, &scaled))
    return fixed_digits::PutFourDecimals(std::signbit(value) && scaled != 0, VectorDigitsOf(scaled),
                                         decimal_sign, ' ', at) -
           1;
  return PutGeneralCsvNumber(value, decimals, decimal_sign, at);
}

}  // namespace velmora::cli

#endif  // VELMORA_CLI_OUTPUT_CSV_TEXT_H_
