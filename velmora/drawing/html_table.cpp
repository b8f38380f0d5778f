#include "velmora/drawing/html_table.h"

#include <algorithm>
#include <cmath>

#include "velmora/drawing/markup_text.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kLargestWritten = 1e15;  // beyond it a double has no decimals
constexpr int kMostDecimals = 12;

bool IsNumeric(const ReportColumn& column) { return column.decimals >= 0; }

// The text of a cell; nothing for a number that cannot be written.
std::optional<std::string> CellText(const ReportCell& cell, const ReportColumn& column) {
  if (const auto* text = std::get_if<std::string>(&cell)) return *text;
  const auto* number = std::get_if<double>(&cell);
  if (number == nullptr) return "";
  if (!(std::fabs(*number) < kLargestWritten)) return std::nullopt;
  return FormatFixed(*number, std::clamp(column.decimals, 0, kMostDecimals));
}

std::string HeaderCell(const ReportColumn& column) {
  std::string text = IsNumeric(column) ? "<th scope=\"col\" class=\"number\">" : "<th scope=\"col\">";
  text += MarkupText(column.title);
  if (!column.unit.empty()) text += " <span class=\"unit\">" + MarkupText(column.unit) + "</span>";
  return text + "</th>";
}

}  // namespace

HtmlTable TableOfBorings(const ReportTable& table) {
  HtmlTable result;
  result.text = "<table>\n<thead><tr>";
  result.data = "{\"columns\":[";
  for (const ReportColumn& column : table.columns) {
    result.text += HeaderCell(column);
    if (!result.data.ends_with('[')) result.data += ',';
    result.data +=
        "[" + JsonString(column.title) + "," + JsonString(column.unit) + (IsNumeric(column) ? ",1]" : ",0]");
  }
  result.text += "</tr></thead>\n<tbody>\n";
  result.data += "],\n\"rows\":[";
  for (const std::vector<ReportCell>& row : table.rows) {
    result.text += "<tr>";
    result.data += result.data.ends_with('[') ? "\n[" : ",\n[";
    for (size_t i = 0; i < table.columns.size(); ++i) {
      const auto text = i < row.size() ? CellText(row[i], table.columns[i]) : "";
      if (!text) ++result.left_out;
      result.text += IsNumeric(table.columns[i]) ? "<td class=\"number\">" : "<td>";
      result.text += MarkupText(text.value_or("")) + "</td>";
      if (i > 0) result.data += ',';
      result.data += JsonString(text.value_or(""));
    }
    result.text += "</tr>\n";
    result.data += ']';
  }
  result.text += "</tbody></table>\n";
  result.data += "]}";
  return result;
}

}  // namespace velmora::drawing
