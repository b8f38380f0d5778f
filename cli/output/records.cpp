#include "cli/output/records.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "cli/output/ending.h"
#include "cli/terminal/error.h"
#include "cli/terminal/wrap.h"
#include "velmora/alignment/station_text.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

constexpr size_t kBetween = 2;  // blanks between the columns of a table
constexpr size_t kIndent = 4;   // of columns that go on below

std::string CellText(const Cell& cell) {
  if (const auto* text = std::get_if<std::string>(&cell)) return *text;
  if (const auto* integer = std::get_if<std::int64_t>(&cell)) return std::to_string(*integer);
  if (const auto* number = std::get_if<Number>(&cell)) return FormatFixed(number->value, number->decimals);
  if (const auto* shown = std::get_if<NumberAsText>(&cell)) return shown->text;
  return {};
}

void AppendCsvCell(const Cell& cell, const CsvDialect& dialect, std::string* row) {
  if (const auto* number = std::get_if<Number>(&cell)) {
    std::array<char, kLongestCsvNumber> text;
    row->append(text.data(),
                PutCsvNumber(number->value, number->decimals, dialect.decimal_sign, text.data()));
  } else {
    const std::string text = CellText(cell);
    const size_t before = row->size();
    row->resize(before + LongestCsvText(text));
    row->resize(static_cast<size_t>(PutCsvText(text, dialect, row->data() + before) - row->data()));
  }
}

// Whole numbers without a decimal point, as long as they are exact.
nlohmann::ordered_json JsonOf(double number) {
  constexpr double kExact = 9007199254740992;  // 2^53
  if (std::trunc(number) == number && std::fabs(number) <= kExact) return static_cast<std::int64_t>(number);
  return number;
}

}  // namespace

OutputFormat OutputOptions::Format() const {
  RequireEnding(file, "a result", {".csv", ".json", ".txt"});
  const std::string ending = EndingOf(file);
  const bool wants_csv = csv || spreadsheet;
  if ((wants_csv && ending == ".json") || (json && ending == ".csv"))
    throw Refusal(At(file, std::string(json  ? "--json"
                                       : csv ? "--csv"
                                             : "--spreadsheet") +
                               " and the ending say different things; omit the option or change the name"));
  if (spreadsheet) return OutputFormat::kSpreadsheet;
  if (csv || ending == ".csv") return OutputFormat::kCsv;
  if (json || ending == ".json") return OutputFormat::kJson;
  return OutputFormat::kTable;
}

const CsvDialect* DialectOf(OutputFormat format) {
  return format == OutputFormat::kCsv           ? &kPlainCsv
         : format == OutputFormat::kSpreadsheet ? &kSpreadsheetCsv
                                                : nullptr;
}

RecordWriter::RecordWriter(OutputFile& output, OutputFormat format, std::vector<Column> columns)
    : output_(output), format_(format), csv_(DialectOf(format)), columns_(std::move(columns)) {
  for (size_t i = 0; i < columns_.size(); ++i) {
    const Column& column = columns_[i];
    if (!(format_ == OutputFormat::kTable ? column.title : column.key).empty()) shown_.push_back(i);
  }
  if (csv_ == nullptr) return;
  output_.Write(csv_->mark);
  std::vector<Cell> titles;
  for (const Column& column : columns_) titles.emplace_back(column.key);
  CsvLine(titles);
}

void RecordWriter::Begin() {
  if (format_ == OutputFormat::kTable && !started_) StartTable();
}

void RecordWriter::CsvLine(const std::vector<Cell>& cells) {
  std::string line;
  for (const size_t i : shown_) {
    if (i != shown_.front()) line += csv_->separator;
    AppendCsvCell(cells[i], *csv_, &line);
  }
  output_.Write(line.append(csv_->line_end));
}

void RecordWriter::Row(const std::vector<Cell>& cells) {
  switch (format_) {
    case OutputFormat::kCsv:
    case OutputFormat::kSpreadsheet:
      CsvLine(cells);
      return;
    case OutputFormat::kJson: {
      nlohmann::ordered_json object;
      for (const size_t i : shown_) object[columns_[i].key] = JsonOf(cells[i]);
      output_.Write((any_ ? ",\n  " : "[\n  ") + JsonText(object));
      any_ = true;
      return;
    }
    case OutputFormat::kTable:
      break;
  }
  std::vector<std::string> texts;
  for (const size_t i : shown_) texts.push_back(Printable(CellText(cells[i])));
  if (started_) {
    TableRow(texts);
    return;
  }
  held_.push_back(std::move(texts));
  if (held_.size() == kRowsForWidths) StartTable();
}

void RecordWriter::Finish() {
  if (format_ == OutputFormat::kJson) output_.Write(any_ ? "\n]\n" : "[]\n");
  Begin();
}

void RecordWriter::StartTable() {
  constexpr size_t kWidest = 100;
  started_ = true;
  std::vector<std::string> titles;
  for (size_t i = 0; i < shown_.size(); ++i) {
    const std::string& title = columns_[shown_[i]].title;
    size_t width = DisplayWidth(title);
    for (const auto& row : held_) width = std::max(width, DisplayWidth(row[i]));
    widths_.push_back(std::min(width, kWidest));
    titles.push_back(title);
  }
  terminal_columns_ = output_.TerminalColumns();
  colours_ = output_.ShowsColours();
  if (terminal_columns_ > 0) FitWidths();
  std::vector<std::string> rules;
  for (const size_t width : widths_) rules.emplace_back(width, '-');
  TableRow(titles, true);
  TableLine(rules, true);
  for (const auto& row : held_) TableRow(row);
  held_.clear();
}

// Takes from the widest column of texts until the table fits. Where none has any to spare, rows take several
// lines (TableLine).
void RecordWriter::FitWidths() {
  constexpr size_t kNarrowest = 12;
  const std::vector<size_t> wanted = widths_;
  size_t total = kBetween * (widths_.size() - 1);
  for (const size_t width : widths_) total += width;
  for (; total > terminal_columns_; --total) {
    size_t widest = widths_.size();
    for (size_t i = 0; i < widths_.size(); ++i) {
      const Column& column = columns_[shown_[i]];
      const bool spare = !column.right && widths_[i] > std::max(kNarrowest, DisplayWidth(column.title));
      if (spare && (widest == widths_.size() || widths_[i] > widths_[widest])) widest = i;
    }
    if (widest == widths_.size()) {
      widths_ = wanted;
      for (size_t& width : widths_) width = std::min(width, RoomBelow());
      return;
    }
    --widths_[widest];
  }
}

size_t RecordWriter::RoomBelow() const {
  return terminal_columns_ > kIndent ? terminal_columns_ - kIndent : 1;
}

// On a terminal texts that are wider than their column go on below.
void RecordWriter::TableRow(const std::vector<std::string>& texts, bool titles) {
  if (terminal_columns_ == 0) {
    TableLine(texts, titles);
    return;
  }
  std::vector<std::vector<std::string>> pieces;
  size_t lines = 1;
  for (size_t i = 0; i < texts.size(); ++i) {
    if (columns_[shown_[i]].right)
      pieces.push_back({texts[i]});
    else
      pieces.push_back(Wrapped(texts[i], widths_[i]));
    lines = std::max(lines, pieces.back().size());
  }
  for (size_t line = 0; line < lines; ++line) {
    std::vector<std::string> cells;
    for (const auto& cell : pieces) cells.push_back(line < cell.size() ? cell[line] : "");
    TableLine(cells, titles, line > 0);
  }
}

// Columns that find no room on the line go on below, indented; a line without text is left out where the row
// goes on.
void RecordWriter::TableLine(const std::vector<std::string>& texts, bool titles, bool goes_on) {
  std::string line;
  size_t used = 0;
  bool any = !goes_on;  // something to print on the line
  const auto end_line = [&] {
    line.erase(line.find_last_not_of(' ') + 1);
    if (any) output_.Write(line + "\n");
  };
  for (size_t i = 0; i < texts.size(); ++i) {
    const Column& column = columns_[shown_[i]];
    const size_t width = std::max(DisplayWidth(texts[i]), widths_[i]);
    const size_t between = i > 0 ? kBetween : 0;
    if (terminal_columns_ > 0 && i > 0 && used + between + width > terminal_columns_) {
      end_line();
      line.assign(kIndent, ' ');
      used = kIndent;
      any = false;
    } else {
      line.append(between, ' ');
      used += between;
    }
    used += width;
    any = any || !texts[i].empty();
    const std::string pad(width - DisplayWidth(texts[i]), ' ');
    const std::string text =
        terminal_columns_ > 0 ? Cut(texts[i], std::max<size_t>(RoomBelow(), 1)) : texts[i];
    const bool unusual = !titles && column.usual != nullptr && !text.empty() && text != column.usual;
    const char* const colour = !colours_ ? "" : titles ? "\033[1m" : unusual ? "\033[33m" : "";
    const std::string shown = *colour == 0 ? text : colour + text + "\033[0m";
    line += column.right ? pad + shown : shown + pad;
  }
  end_line();
}

Cell StationCell(double station, bool km) {
  if (!km) return Number{station};
  return NumberAsText{station, StationText(station, true)};
}

nlohmann::ordered_json JsonOf(const Cell& cell) {
  if (const auto* text = std::get_if<std::string>(&cell)) return *text;
  if (const auto* integer = std::get_if<std::int64_t>(&cell)) return *integer;
  if (const auto* number = std::get_if<Number>(&cell)) return JsonOf(number->value);
  if (const auto* number = std::get_if<NumberAsText>(&cell)) return JsonOf(number->value);
  return nullptr;
}

std::string JsonText(const nlohmann::ordered_json& value, int indent) {
  return value.dump(indent, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace velmora::cli
