// Rows of results, for a reader on a terminal, as CSV or as JSON, written as they come.
#ifndef VELMORA_CLI_OUTPUT_RECORDS_H_
#define VELMORA_CLI_OUTPUT_RECORDS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/output/output_file.h"

namespace velmora::cli {

enum class OutputFormat { kTable, kCsv, kJson };

// The options that every command with a result has.
struct OutputOptions {
  std::string file;
  bool csv = false;
  bool json = false;
  bool km = false;  // stations as km/m

  // What --csv or --json say, else what the file's name ends in, else a table.
  OutputFormat Format() const;
};

// A number as JSON and CSV give it, and as the table shows it.
struct Number {
  double value;
  int decimals = 3;  // in the table; one more in CSV
};
// Text in the table and in CSV for what is a plain number in JSON, as stations are.
struct Shown {
  double value;
  std::string text;
};
using Cell = std::variant<std::monostate, std::string, std::int64_t, Number, Shown>;

// A station: a number in JSON, the way the options ask for elsewhere.
Cell StationCell(double station, bool km);

struct Column {
  std::string key;    // in CSV and JSON; a column without one is left out there
  std::string title;  // in the table, likewise
  bool right = false;
};

// Table: columns as wide as the first rows need (kRowsLookedAt of them), so that any number of rows takes
// no more memory. CSV: a header and RFC 4180 rows. JSON: an array with an object a row; cells without a
// value are null.
class RecordWriter {
 public:
  RecordWriter(OutputFile& sink, OutputFormat format, std::vector<Column> columns);
  // For rows that are to be seen as they come: the table's columns are as wide as their titles.
  void Begin();
  void Row(const std::vector<Cell>& cells);
  // Writes what is still held back; the sink is not finished.
  void Finish();

  static constexpr size_t kRowsLookedAt = 500;

 private:
  void TableRow(const std::vector<std::string>& texts);
  void StartTable();

  OutputFile& sink_;
  OutputFormat format_;
  std::vector<Column> columns_;
  std::vector<size_t> shown_;  // which cells of a row are written
  std::vector<std::vector<std::string>> held_;
  std::vector<size_t> widths_;
  bool started_ = false;
  bool any_ = false;
};

// The number of characters that a terminal shows for UTF-8 text.
size_t DisplayWidth(std::string_view text);
// A JSON string literal; bytes that are no UTF-8 become U+FFFD.
std::string JsonString(std::string_view text);
std::string JsonNumber(double value);
// A cell as a JSON value.
std::string JsonCell(const Cell& cell);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_OUTPUT_RECORDS_H_
