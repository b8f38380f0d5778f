#include "velmora/drawing/html_data.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <variant>

#include "velmora/drawing/plain_text.h"
#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/profile_geometry.h"
#include "velmora/drawing/scale.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr int kPointDecimals = 6;
constexpr int kBoringDecimals = 4;
constexpr int kMostDecimals = 12;
constexpr double kLargestWritten = 1e15;  // beyond it a double has no decimals

// A JSON string that can stand in a script element: nothing in it ends the element or begins a comment.
std::string JsonString(std::string_view utf8) {
  std::string text = "\"";
  for (const char c : PlainText(utf8)) {
    if (c == '<') {
      text += "\\u003c";
    } else {
      if (c == '"' || c == '\\') text += '\\';
      text += c;
    }
  }
  return text + "\"";
}

// The number with at most `decimals` decimals; "null" for one that is not finite or beyond kLargestDrawn.
std::string JsonNumber(double value, int decimals) {
  return IsDrawable(value) ? TrimmedFixed(value, decimals) : "null";
}

std::string PointsData(std::span<const kovltype> points) {
  std::string text = "[";
  for (const kovltype& p : points) {
    if (text.size() > 1) text += ",\n";
    text += "[" + JsonNumber(p.x, kPointDecimals) + "," + JsonNumber(p.y, kPointDecimals) + "," +
            FormatShortest(p.bulge) + "," + JsonNumber(p.sek, kPointDecimals) + "]";
  }
  return text + "]";
}

// With the bulges of the segments as they are drawn.
std::vector<kovltype> DrawnPoints(const PlanPath& path) {
  std::vector<kovltype> points = path.Points();
  for (size_t i = 0; i < points.size(); ++i)
    points[i].bulge = i + 1 < points.size() ? PathSegment(points[i], points[i + 1]).A().bulge : 0;
  return points;
}

std::string BoringData(const PlotBoring& boring) {
  const bool on_map = IsDrawable(boring.northing) && IsDrawable(boring.easting);
  const bool has_offset = boring.HasOffset() && IsDrawable(boring.station) && IsDrawable(boring.offset);
  const auto number = [](bool known, double value) {
    return "," + (known ? JsonNumber(value, kBoringDecimals) : std::string("null"));
  };
  return "[" + JsonString(boring.id) + number(on_map, boring.northing) + number(on_map, boring.easting) +
         number(boring.level.has_value(), boring.level.value_or(0)) + number(has_offset, boring.station) +
         number(has_offset, boring.offset) + (boring.placed && has_offset ? ",1]" : ",0]");
}

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

std::string ReportData(const Report& report, std::string_view table) {
  const PlotInput& road = report.road;
  std::string text = "{\"km\":";
  text += road.km_stations ? "true" : "false";
  text += ",\"decimals\":" + std::to_string(std::clamp(report.setup.decimals, 0, 9));
  text += ",\n\"plan\":" + PointsData(DrawnPoints(PlanPath(road.plan)));
  text += ",\n\"profile\":" + PointsData(ProfileLine(road.profile).Points());
  text += ",\n\"borings\":[";
  for (size_t i = 0; i < road.borings.size(); ++i)
    text += (i == 0 ? "\n" : ",\n") + BoringData(road.borings[i]);
  text += "],\n\"table\":";
  text += table;
  return text + "}";
}

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
