// Rows of results as a table, CSV or JSON, written as they come.
#ifndef VELMORA_CLI_OUTPUT_RECORDS_H_
#define VELMORA_CLI_OUTPUT_RECORDS_H_

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/output/csv_text.h"
#include "cli/output/output_file.h"

namespace velmora::cli {

// kSpreadsheet: CSV as kSpreadsheetCsv.
enum class OutputFormat { kTable, kCsv, kSpreadsheet, kJson };

// The options that every command with a result has.
struct OutputOptions {
  std::string file;
  bool csv = false;
  bool spreadsheet = false;
  bool json = false;
  bool km = false;  // stations as km/m

  // What the file's name ends in or --csv or --json say, else a table. Throws a Refusal for an ending that
  // says something else.
  OutputFormat Format() const;
};

// A number as JSON and CSV give it, and as the table shows it.
struct Number {
  double value;
  int decimals = 3;  // in the table; one more in CSV
};
// A number in JSON that is text in the table and in CSV, as a station in kilometres.
struct NumberAsText {
  double value;
  std::string text;
};
using Cell = std::variant<std::monostate, std::string, std::int64_t, Number, NumberAsText>;

// A station: in kilometres where the options say so, except in JSON.
Cell StationCell(double station, bool km);

struct Column {
  std::string key;    // in CSV and JSON; a column without one is left out there
  std::string title;  // in the table, likewise
  bool right = false;
  const char* usual = nullptr;  // a terminal shows any other text in colour
};

// Nothing for other formats than CSV.
const CsvDialect* DialectOf(OutputFormat format);

// Table: columns as wide as the first kRowsForWidths rows need, so that memory does not grow with their
// number; on a terminal at most as wide as it. CSV: a header and RFC 4180 rows. JSON: an array with an object
// a row; cells without a value are null.
class RecordWriter {
 public:
  RecordWriter(OutputFile& output, OutputFormat format, std::vector<Column> columns);
  // For rows that are shown as they come: the table's columns are as wide as their titles.
  void Begin();
  void Row(const std::vector<Cell>& cells);
  // Writes the rows still held back; does not finish the file.
  void Finish();

  static constexpr size_t kRowsForWidths = 500;

 private:
  void CsvLine(const std::vector<Cell>& cells);
  void TableRow(const std::vector<std::string>& texts, bool titles = false);
  void TableLine(const std::vector<std::string>& texts, bool titles, bool goes_on = false);
  void FitWidths();
  size_t RoomBelow() const;
  void StartTable();

  OutputFile& output_;
  OutputFormat format_;
  const CsvDialect* csv_;  // of CSV
  std::vector<Column> columns_;
  std::vector<size_t> shown_;  // which cells of a row are written
  std::vector<std::vector<std::string>> held_;
  std::vector<size_t> widths_;
  size_t terminal_columns_ = 0;  // 0: any width
  bool colours_ = false;
  bool started_ = false;
  bool any_ = false;
};

// A cell as a JSON value; a number that is not finite is null.
nlohmann::ordered_json JsonOf(const Cell& cell);
// The text of a JSON value, on one line, or on one for each value with `indent` blanks a level. Bytes that
// are not UTF-8 become U+FFFD.
std::string JsonText(const nlohmann::ordered_json& value, int indent = -1);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_OUTPUT_RECORDS_H_
