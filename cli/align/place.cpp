#include <algorithm>
#include <cmath>
#include <span>

#include "cli/align/commands.h"
#include "cli/align/placing.h"
#include "cli/input/list_input.h"
#include "cli/output/progress.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/station_text.h"
#include "velmora/lists/list_reader.h"
#include "velmora/lists/list_source.h"
#include "velmora/lists/repeated_ids.h"
#include "velmora/text/counted.h"

namespace velmora::cli {
namespace {

std::vector<Column> PlaceColumns() {
  return {{"id", "id"},
          {"station", "station", true},
          {"offset", ""},
          {"side", ""},
          {"", "offset", true},
          {"northing", "northing", true},
          {"easting", "easting", true},
          {"profile_level", "profile", true},
          {"status", "status", false, StatusText(PlaceStatus::kOn)},
          {"line", ""}};
}

// A signed number, or one with its side: "V 3.2", "h12.4".
std::optional<double> ParseOffset(std::string_view text, DecimalSign decimal) {
  const char side = text.empty() ? '\0' : text.front();
  const double sign = side == 'V' || side == 'v' ? -1 : side == 'H' || side == 'h' ? 1 : 0;
  if (sign == 0) return FieldNumber(text, decimal);
  const std::optional<double> metres = FieldNumber(TrimmedField(text.substr(1)), decimal);
  if (!metres || *metres < 0) return std::nullopt;
  return sign * *metres;
}

bool IsLeft(std::string_view side) {
  return std::string_view("VvLl").find(side[0]) != std::string_view::npos;
}

// The offset of a row, with the side of its own column where there is one; 0 where it is empty. Without one
// the problem.
std::optional<double> OffsetOf(const RowFields& fields, DecimalSign decimal, std::string* problem) {
  const std::string_view text = fields.Text(kOffset);
  const std::string_view side = fields.Text(kSide);
  const std::optional<double> offset = text.empty() ? 0 : ParseOffset(text, decimal);
  if (!offset || side.empty()) {
    if (!offset) *problem = NotANumber(StationRoles()[kOffset], text);
    return offset;
  }
  const bool has_side = text.find_first_of("VvHh-") == 0;
  if (std::string_view("VvLlHhRr").find(side[0]) == std::string_view::npos)
    *problem = "side " + Quoted(side) + " is neither V nor H";
  else if (has_side && *offset != 0 && (*offset < 0) != IsLeft(side))
    *problem = "side " + Quoted(side) + " is not that of offset " + Quoted(text);
  if (!problem->empty()) return std::nullopt;
  return IsLeft(side) && *offset > 0 ? -*offset : *offset;
}

// Metres, or kilometres and metres: "1/250,5".
std::optional<double> StationOf(const RowFields& fields, DecimalSign decimal) {
  if (double metres = 0; fields.Read(kStation, &metres)) return metres;
  std::string text(fields.Text(kStation));
  const bool has_point = text.find('.') != std::string::npos;
  if (decimal == DecimalSign::kComma && has_point) return std::nullopt;
  if (decimal != DecimalSign::kPoint && !has_point) std::replace(text.begin(), text.end(), ',', '.');
  return ParseStation(text);
}

}  // namespace

void AlignPlace(const PlaceOptions& options) {
  RequireOneStandardInput(options.file, options.stations, "--stations");
  AlignmentInput input;
  ReadPlan(options.file, &input);
  ListReader list(options.stations, StationRoles(), options.list);
  WarnOf(options.stations, list.TakeNotes());
  const ListLayout& layout = list.Layout();
  const RowFields& fields = list.Fields();
  const size_t carried = layout.carried.size();
  const std::vector<Column> columns = WithCarried(layout, PlaceColumns());
  OutputFile output(options.output.file, {options.file, FileOfList(options.stations)});
  RecordWriter records(output, options.output.Format(), columns);
  Progress progress("Placing stations", list.Size());
  RepeatedIds ids;
  std::int64_t rows = 0;
  std::int64_t unreadable = 0;
  std::string first_problem;
  PlaceNotes notes(input, options.output.km);
  while (list.Next()) {
    progress.Update(list.Consumed(), static_cast<std::uint64_t>(++rows));
    std::vector<Cell> row(columns.size());
    for (size_t i = 0; i < carried; ++i) row[i] = std::string(fields.Field(layout.carried[i].column));
    const auto cells = std::span(row).subspan(carried);
    ids.Add(fields.Text(kStationId), list.Line());
    cells[0] = std::string(fields.Text(kStationId));
    cells[9] = list.Line();
    const std::optional<double> station = StationOf(fields, layout.decimal);
    std::string problem;
    const std::optional<double> offset = OffsetOf(fields, layout.decimal, &problem);
    if (!fields.Problem().empty() || !station || !offset) {
      if (!station || problem.empty() || !fields.Problem().empty()) problem = list.Problem(kStation);
      if (unreadable++ == 0) first_problem = At(options.stations, list.Line(), problem);
      cells[8] = "unreadable row (line " + std::to_string(list.Line()) + "): " + problem;
      records.Row(row);
      continue;
    }
    cells[1] = StationCell(*station, options.output.km);
    cells[2] = Number{*offset};
    cells[3] = std::string(OffsetSide(*offset));
    cells[4] = OffsetText(*offset);
    double x = 0;
    double y = 0;
    const bool placed =
        input.set.plan.Vag2xy(*station, *offset, &x, &y) == 0 && std::isfinite(x) && std::isfinite(y);
    if (placed) {
      cells[5] = Number{x};
      cells[6] = Number{y};
      if (const std::optional<double> level = LevelAt(input, *station)) cells[7] = Number{*level};
    }
    cells[8] = StatusText(placed ? PlaceStatus::kOn : WhyNotPlaced(input, *station));
    notes.Add(*station);
    records.Row(row);
  }
  records.Finish();
  output.Finish();
  progress.Clear();
  WarnOf(options.stations, list.TakeNotes());
  WarnOf(options.stations, ids.Note());
  // On descending stations the suite reverses the sign of an offset that it finds, but not of one it places.
  if (IsDescending(input.plan))
    Warn(At(options.file,
            "its stations are descending: V and H are left and right along its points from first to last, "
            "and align locate reports the opposite side, at corners too; swap the side of offsets that it "
            "reported"));
  notes.Report();
  if (unreadable == 0) return;
  PrintError(first_problem + "; " + Counted(unreadable, "row was", "rows were") +
             " not placed; correct the list and run again");
  throw ExitWith{1};
}

}  // namespace velmora::cli
