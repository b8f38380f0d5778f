// Rows of a list of points or stations: comma, semicolon or tab between the fields, UTF-8, UTF-16 or
// Windows-1252, with or without a byte-order mark, quoted or not.
#ifndef VELMORA_CLI_INPUT_ROWS_H_
#define VELMORA_CLI_INPUT_ROWS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/platform/text_file.h"

namespace velmora::cli {

// Throws a Refusal that says why a file could not be opened.
[[noreturn]] void RefuseUnopened(const std::string& file);

// Throws a Refusal for a row of more than RowReader::kLongestRow.
[[noreturn]] void RefuseLongRow(const std::string& file, std::int64_t line);

// Whole lines of a list, as bytes.
struct RowBlock {
  std::string bytes;
  TextEncoding encoding = TextEncoding::kWindows1252;  // in which lines that are valid UTF-8 are UTF-8
  std::int64_t first_line = 1;
};

// The separator of a list, from its first row: a tab if it has one, else a semicolon, else a comma.
wchar_t DetectSeparator(std::wstring_view row);

// The fields of a row, blanks around them dropped. A field in double quotes may hold the separator and
// doubled quotes; one whose quote is never closed reaches to the end of the row.
std::vector<std::wstring> SplitRow(std::wstring_view row, wchar_t separator);

// The number that a field consists of; with `decimal_comma` a "," may stand for the ".".
std::optional<double> FieldNumber(std::wstring_view field, bool decimal_comma);

// Reads one row at a time; memory does not grow with their number.
class RowReader {
 public:
  // "-" is standard input. Throws a Refusal when the file cannot be opened.
  explicit RowReader(std::string file);

  // The next row that is not blank. False at the end; throws a Refusal when the file cannot be read on, or
  // has a row of more than kLongestRow.
  bool Next();
  // The rows after the last Next, many at once: whole lines, blank ones too. Fails as Next does.
  bool NextBlock(RowBlock* block);
  const std::vector<std::wstring>& Fields() const { return fields_; }
  std::int64_t Line() const { return line_; }
  wchar_t Separator() const { return separator_; }
  // A comma is a decimal point unless it is the separator.
  bool DecimalComma() const { return separator_ != L','; }

  // In characters. Every field of a row takes memory of its own.
  static constexpr size_t kLongestRow = size_t{1} << 20;

  const std::string& File() const { return file_; }
  std::uint64_t Size() const { return reader_.Size(); }
  std::uint64_t Consumed() const { return reader_.Consumed(); }

 private:
  std::string file_;
  TextReader reader_;
  [[noreturn]] void RefuseUnread() const;

  CString text_;
  std::vector<std::wstring> fields_;
  std::int64_t line_ = 0;
  wchar_t separator_ = 0;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_INPUT_ROWS_H_
