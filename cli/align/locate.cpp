#include <array>
#include <limits>

#include "cli/align/axis_check.h"
#include "cli/align/commands.h"
#include "cli/align/offset_text.h"
#include "cli/align/placing.h"
#include "cli/align/point_list.h"
#include "cli/error.h"
#include "cli/output/progress.h"

namespace velmora::cli {
namespace {

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

// How the rows turned out, for the line at the end.
class Tally {
 public:
  void Add(PlaceStatus status) { ++placed_[static_cast<size_t>(status)]; }
  void AddUnreadable() { ++unreadable_; }
  std::int64_t Unreadable() const { return unreadable_; }

  std::string Text() const {
    std::int64_t rows = unreadable_;
    std::string parts;
    for (size_t i = 0; i < placed_.size(); ++i) {
      rows += placed_[i];
      if (placed_[i] > 0)
        parts += ", " + std::to_string(placed_[i]) + " " + StatusText(static_cast<PlaceStatus>(i));
    }
    if (unreadable_ > 0) parts += ", " + std::to_string(unreadable_) + " unreadable";
    return std::to_string(rows) + (rows == 1 ? " point" : " points") +
           (parts.empty() ? "" : ": " + parts.substr(2));
  }

 private:
  std::array<std::int64_t, 5> placed_{};
  std::int64_t unreadable_ = 0;
};

void SetArea(const LocateOptions& options, CVaglinje* plan) {
  constexpr double kNoLimit = std::numeric_limits<double>::infinity();
  const Range stations = options.area.value_or(Range{-kNoLimit, kNoLimit});
  const Range offsets = options.offsets.value_or(Range{-kNoLimit, kNoLimit});
  plan->omrSekMin = stations.low;
  plan->omrSekMax = stations.high;
  plan->omrAvstMin = offsets.low;
  plan->omrAvstMax = offsets.high;
}

std::vector<Cell> UnreadableRow(const ListedPoint& point) {
  std::vector<Cell> cells(LocateColumns().size());
  cells[0] = point.id;
  cells[10] = "unreadable row (line " + std::to_string(point.line) + "): " + point.problem;
  cells[11] = point.line;
  return cells;
}

}  // namespace

void AlignLocate(const LocateOptions& options) {
  AlignmentInput input;
  if (options.file == "-" && options.points == "-")
    throw Refusal("only one of FILE and --points can be standard input");
  ReadAlignment(options.file, &input);
  RequirePlan(input);
  PointList points(options.points);
  SetArea(options, &input.set.plan);
  const bool in_area = options.area || options.offsets;

  const OutputFormat format = options.output.Format();
  Sink sink(options.output.file, {options.file, options.points});
  RecordWriter records(sink, format, LocateColumns());
  AxisCheck axes(MeasurePlan(input.plan).box);
  Tally tally;
  ListedPoint first_problem;
  Progress progress("Placing points", points.Rows().Size());
  std::uint64_t rows = 0;
  for (ListedPoint point; points.Next(&point);) {
    progress.Update(points.Rows().Consumed(), ++rows);
    if (!point.problem.empty()) {
      if (tally.Unreadable() == 0) first_problem = point;
      tally.AddUnreadable();
      records.Row(UnreadableRow(point));
      continue;
    }
    axes.Add(point.northing, point.easting);
    const Placing placing = LocatePoint(input, point.northing, point.easting, options.mode, in_area);
    tally.Add(placing.status);
    const bool found = placing.status == PlaceStatus::kOn || placing.status == PlaceStatus::kOutsideArea;
    std::vector<Cell> cells(LocateColumns().size());
    cells[0] = point.id;
    cells[1] = Number{point.northing};
    cells[2] = Number{point.easting};
    if (found) {
      cells[3] = StationCell(placing.station, options.output.km);
      cells[4] = Number{placing.offset};
      cells[5] = OffsetSide(placing.offset);
      cells[6] = OffsetText(placing.offset);
    }
    if (placing.profile_level) cells[7] = Number{*placing.profile_level};
    if (point.level) cells[8] = Number{*point.level};
    if (placing.profile_level && point.level) cells[9] = Number{*point.level - *placing.profile_level};
    cells[10] = StatusText(placing.status);
    cells[11] = point.line;
    records.Row(cells);
  }
  records.Finish();
  if (format == OutputFormat::kTable) sink.Write("\n" + tally.Text() + "\n");
  sink.Finish();
  if (axes.LooksSwapped())
    Warn(At(options.points, "northing and easting look exchanged: " + std::to_string(axes.NearSwapped()) +
                                " points lie near the road with them swapped, " +
                                std::to_string(axes.Near()) +
                                " as they stand; check the columns' titles or order"));
  if (tally.Unreadable() == 0) return;
  Warn(At(options.points, first_problem.line,
          first_problem.problem + "; " + std::to_string(tally.Unreadable()) +
              (tally.Unreadable() == 1 ? " row was" : " rows were") + " not placed, correct and run again"));
  throw ExitWith{1};
}

}  // namespace velmora::cli
