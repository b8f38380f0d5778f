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

// Takes from the widest column of texts until the table fits or none has any to spare.
void RecordWriter::FitWidths() {
  constexpr size_t kNarrowest = 12;
  size_t total = kBetween * (widths_.size() - 1);
  for (const size_t width : widths_) total += width;
  for (; total > terminal_columns_; --total) {
    size_t widest = widths_.size();
    for (size_t i = 0; i < widths_.size(); ++i) {
      const Column& column = columns_[shown_[i]];
      const bool spare = !column.right && widths_[i] > std::max(kNarrowest, DisplayWidth(column.title));
      if (spare && (widest == widths_.size() || widths_[i] > widths_[widest])) widest = i;
    }
    if (widest == widths_.size()) return;
    --widths_[widest];
  }
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
    TableLine(cells, titles);
  }
}

void RecordWriter::TableLine(const std::vector<std::string>& texts, bool titles) {
  std::string line;
  size_t left = terminal_columns_ == 0 ? std::string::npos : terminal_columns_;
  for (size_t i = 0; i < texts.size() && left > 0; ++i) {
    const Column& column = columns_[shown_[i]];
    const size_t width = DisplayWidth(texts[i]);
    const std::string pad(widths_[i] > width ? widths_[i] - width : 0, ' ');
    std::string cell = column.right ? pad + texts[i] : texts[i] + pad;
    if (i + 1 == texts.size()) cell.erase(cell.find_last_not_of(' ') + 1);
    if (i > 0) cell.insert(0, kBetween, ' ');
    if (left != std::string::npos) {
      // The sign of a cut stands also where only later columns find no room.
      if (i + 1 < texts.size() && DisplayWidth(cell) >= left) cell += ' ';
      cell = Cut(cell, left);
      left -= DisplayWidth(cell);
    }
    const bool unusual = !titles && column.usual != nullptr && !texts[i].empty() && texts[i] != column.usual;
    if (colours_ && (titles || unusual)) cell = (titles ? "\033[1m" : "\033[33m") + cell + "\033[0m";
    line += cell;
  }
  line.erase(line.find_last_not_of(' ') + 1);
  output_.Write(line + "\n");
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
