#include "cli/align/locate_rows.h"

#include <array>
#include <charconv>

#include "cli/align/offset_text.h"
#include "cli/output/csv_text.h"
#include "velmora/alignment/station_text.h"

namespace velmora::cli {
namespace {

constexpr int kDecimals = 3;  // of metres

bool IsFound(const Placing& placing) {
  return placing.status == PlaceStatus::kOn || placing.status == PlaceStatus::kOutsideArea;
}

std::string StatusOf(const ListedPoint& point, const Placing& placing) {
  if (point.problem.empty()) return StatusText(placing.status);
  return "unreadable row (line " + std::to_string(point.line) + "): " + point.problem;
}

}  // namespace

std::vector<Column> LocateColumns() {
  return {{"id", "id"},
          {"northing", "northing", true},
          {"easting", "easting", true},
          {"station", "station", true},
          {"offset", ""},
          {"side", ""},
          {"", "offset", true},
          {"profile_level", "profile", true},
          {"level", "level", true},
          {"difference", "diff", true},
          {"status", "status"},
          {"line", ""}};
}

std::vector<Cell> LocateCells(const ListedPoint& point, const Placing& placing, bool km) {
  std::vector<Cell> cells(LocateColumns().size());
  cells[0] = point.id;
  cells[10] = StatusOf(point, placing);
  cells[11] = point.line;
  if (!point.problem.empty()) return cells;
  cells[1] = Number{point.northing};
  cells[2] = Number{point.easting};
  if (IsFound(placing)) {
    cells[3] = StationCell(placing.station, km);
    cells[4] = Number{placing.offset};
    cells[5] = OffsetSide(placing.offset);
    cells[6] = OffsetText(placing.offset);
  }
  if (placing.profile_level) cells[7] = Number{*placing.profile_level};
  if (point.level) cells[8] = Number{*point.level};
  if (placing.profile_level && point.level) cells[9] = Number{*point.level - *placing.profile_level};
  return cells;
}

void AppendLocateCsv(const ListedPoint& point, const Placing& placing, bool km, std::string* text) {
  constexpr size_t kNumbers = 7;
  std::array<char, kNumbers*(kLongestCsvNumber + 1) + 64> row;
  char* at = row.data();
  const auto number = [&at](bool given, double value) {
    if (given) at = PutCsvNumber(value, kDecimals, at);
    *at++ = ',';
  };
  const bool is_point = point.problem.empty();
  const bool found = is_point && IsFound(placing);
  AppendCsvText(point.id, text);
  *at++ = ',';
  number(is_point, point.northing);
  number(is_point, point.easting);
  if (found && km) {
    text->append(row.data(), at);
    at = row.data();
    AppendCsvText(StationText(placing.station, true), text);
  }
  number(found && !km, placing.station);
  number(found, placing.offset);
  if (found)
    for (const char side : OffsetSide(placing.offset)) *at++ = side;
  *at++ = ',';
  const bool on_profile = is_point && placing.profile_level;
  const bool has_level = is_point && point.level;
  number(on_profile, placing.profile_level.value_or(0));
  number(has_level, point.level.value_or(0));
  number(on_profile && has_level, point.level.value_or(0) - placing.profile_level.value_or(0));
  text->append(row.data(), at);
  if (is_point)
    *text += StatusText(placing.status);
  else
    AppendCsvText(StatusOf(point, placing), text);
  at = row.data();
  *at++ = ',';
  at = std::to_chars(at, at + 24, point.line).ptr;
  *at++ = '\n';
  text->append(row.data(), at);
}

}  // namespace velmora::cli
