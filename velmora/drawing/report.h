// What is handed over of a road and its borings: plan and profile sheets to scale, one after another, with an
// overview before them and the table of the borings behind them.
#ifndef VELMORA_DRAWING_REPORT_H_
#define VELMORA_DRAWING_REPORT_H_

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/canvas.h"
#include "velmora/drawing/ritnings_format.h"

namespace velmora::drawing {

struct ReportColumn {
  std::string title;  // UTF-8
  std::string unit;   // "m"; may be empty
  int decimals = -1;  // of its numbers; -1 for a column of texts
};
using ReportCell = std::variant<std::monostate, double, std::string>;

// The table of the borings: identity, coordinates, station, side and offset, level, difference, status, and
// the columns of the list.
struct ReportTable {
  std::vector<ReportColumn> columns;
  std::vector<std::vector<ReportCell>> rows;  // row i is of boring i; as many cells as there are columns
};

// A field of the title block with its text as it is to be written. Millimetres from the lower left corner of
// the block, x to the right and y upwards, to the start of the base line.
struct StampField {
  std::string text;  // UTF-8
  double x = 0;
  double y = 0;
  double size = 3;
  bool is_sheet_number = false;  // `text` is replaced by the sheet's number: "3 (12)"
  bool is_scale = false;         // by the sheet's scales: "L 1:1000, H 1:100"
};

struct SheetSetup {
  ritformattype format{};               // the sheet and its inner rectangles
  std::optional<double> scale;          // the N of 1:N; nothing for the largest standard scale that fits
  std::optional<double> height_scale;   // the same for the heights of the profile
  std::optional<double> first_station;  // of what is drawn, m; nothing for the road's ends
  std::optional<double> last_station;
  int decimals = 2;  // of levels
};

struct Report {
  PlotInput road;  // with the borings
  ReportTable table;
  SheetSetup setup;
  std::vector<StampField> stamp;
  std::string date;    // "2026-11-22", UTF-8
  std::string author;  // may be empty
};

struct ReportSummary {
  size_t sheets = 0;
  double scale = 0;                // the N of 1:N
  double height_scale = 0;         // 0 without a profile
  std::vector<std::string> notes;  // lines for people on what the sheets leave out; empty when nothing
};

// How large a report is, found without drawing. One of more than kMostReportStrips has no strips at all: only
// overview and table are drawn, and the notes say so.
struct ReportSize {
  size_t sheets = 0;
  size_t strips = 0;  // that the scale asks for; of more than kMostReportStrips one more than these
  double scale = 0;
  double height_scale = 0;
};
inline constexpr size_t kMostReportStrips = 2000;
ReportSize SizeOfReport(const Report& report);

// Begins each sheet in turn and draws it. Any input gives at least one sheet, if need be one that says there
// is nothing to draw.
ReportSummary DrawReport(const Report& report, Canvas& canvas);

// How a sheet's millimetres lie on the map: easting = west + x * metres, northing = north - y * metres.
struct MapPosition {
  double west = 0;
  double north = 0;
  double metres = 1;  // a millimetre of the sheet
};
// Where the one sheet of DrawReportMap lies.
MapPosition PositionOfReportMap(const Report& report);
// The plan of all sheets as one, north up and to scale, with the sheets' outlines; for map coordinates.
ReportSummary DrawReportMap(const Report& report, Canvas& canvas);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_REPORT_H_
