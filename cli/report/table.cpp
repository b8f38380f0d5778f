#include "cli/report/table.h"

#include <algorithm>
#include <cmath>

#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_text.h"

namespace velmora::cli {
namespace {

using drawing::ReportCell;

constexpr int kDecimals = 3;  // of coordinates, stations and offsets

ReportCell NumberCell(const std::optional<double>& value) {
  return value && std::isfinite(*value) ? ReportCell(*value) : ReportCell();
}

// The digits behind the decimal sign of a field that is a number as people write measurements: without a "+",
// zeros before it or an exponent, so that the number says all that the text does. Nothing for another text.
std::optional<int> DecimalsOfNumber(const std::string& text, DecimalSign sign) {
  constexpr size_t kMostDigits = 15;
  const char point = sign == DecimalSign::kComma ? ',' : '.';
  std::string_view digits = text;
  if (digits.starts_with('-')) digits.remove_prefix(1);
  const size_t at = std::min(digits.find(point), digits.size());
  const std::string_view fraction = digits.substr(std::min(at + 1, digits.size()));
  const std::string_view whole = digits.substr(0, at);
  const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
  if (whole.empty() || (whole.size() > 1 && whole[0] == '0') ||
      whole.size() + fraction.size() > kMostDigits || (at < digits.size() && fraction.empty()) ||
      !std::all_of(whole.begin(), whole.end(), is_digit) ||
      !std::all_of(fraction.begin(), fraction.end(), is_digit))
    return std::nullopt;
  return static_cast<int>(fraction.size());
}

// The column with as many decimals as its fields have when all of them are numbers.
drawing::ReportColumn OwnColumn(const PlacedBorings& borings, size_t own) {
  drawing::ReportColumn column = {borings.own_titles[own], "", -1};
  for (const std::vector<std::string>& row : borings.own) {
    if (row[own].empty()) continue;
    const std::optional<int> decimals = DecimalsOfNumber(row[own], borings.decimal);
    if (!decimals) return {borings.own_titles[own], "", -1};
    column.decimals = std::max(column.decimals, *decimals);
  }
  return column;
}

ReportCell OwnCell(const std::string& field, const drawing::ReportColumn& column, DecimalSign sign) {
  if (field.empty()) return {};
  return column.decimals < 0 ? ReportCell(field) : NumberCell(FieldNumber(field, sign));
}

}  // namespace

drawing::ReportTable MakeReportTable(const PlacedBorings& borings, int decimals, bool km) {
  drawing::ReportTable table;
  table.columns = {{"Id", "", -1},
                   {"Northing", "m", kDecimals},
                   {"Easting", "m", kDecimals},
                   {"Station", km ? "km/m" : "m", km ? -1 : kDecimals},
                   {"Side", "", -1},
                   {"Offset", "m", kDecimals},
                   {"Level", "m", decimals},
                   {"Profile level", "m", decimals},
                   {"Difference", "m", decimals},
                   {"Status", "", -1}};
  for (size_t own = 0; own < borings.own_titles.size(); ++own)
    table.columns.push_back(OwnColumn(borings, own));
  table.rows.reserve(borings.points.size() + borings.unreadable.size());
  for (size_t i = 0; i < borings.points.size(); ++i) {
    const drawing::PlotBoring& boring = borings.points[i];
    const std::optional<double>& profile = borings.profile_levels[i];
    std::vector<ReportCell>& row = table.rows.emplace_back();
    row = {boring.id, NumberCell(boring.northing), NumberCell(boring.easting)};
    if (boring.HasOffset()) {
      row.push_back(km ? ReportCell(StationText(boring.station, true)) : NumberCell(boring.station));
      row.emplace_back(std::string(OffsetSide(boring.offset)));
      row.push_back(NumberCell(std::fabs(boring.offset)));
    } else {
      row.resize(row.size() + 3);
    }
    row.push_back(NumberCell(boring.level));
    row.push_back(NumberCell(profile));
    row.push_back(boring.level && profile ? NumberCell(*boring.level - *profile) : ReportCell());
    row.emplace_back(boring.status);
    for (size_t own = 0; own < borings.own_titles.size(); ++own)
      row.push_back(OwnCell(borings.own[i][own], table.columns[kReportColumns + own], borings.decimal));
  }
  for (const PlacedBorings::UnreadableRow& unreadable : borings.unreadable) {
    std::vector<ReportCell>& row = table.rows.emplace_back(table.columns.size());
    row[0] = unreadable.id;
    row[kReportColumns - 1] =
        "unreadable row (line " + std::to_string(unreadable.line) + "): " + unreadable.problem;
  }
  return table;
}

}  // namespace velmora::cli
