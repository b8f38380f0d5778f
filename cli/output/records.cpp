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
  std::vector<std::string> rules;
  for (size_t i = 0; i < shown_.size(); ++i) {
    const std::string& title = columns_[shown_[i]].title;
    size_t width = DisplayWidth(title);
    for (const auto& row : held_) width = std::max(width, DisplayWidth(row[i]));
    widths_.push_back(std::min(width, kWidest));
    titles.push_back(title);
    rules.emplace_back(widths_.back(), '-');
  }
  TableRow(titles);
  TableRow(rules);
  for (const auto& row : held_) TableRow(row);
  held_.clear();
}

void RecordWriter::TableRow(const std::vector<std::string>& texts) {
  std::string line;
  for (size_t i = 0; i < texts.size(); ++i) {
    const size_t width = DisplayWidth(texts[i]);
    const std::string pad(widths_[i] > width ? widths_[i] - width : 0, ' ');
    if (i > 0) line += "  ";
    line += columns_[shown_[i]].right ? pad + texts[i] : texts[i] + pad;
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
