// The plan in one piece, in map coordinates.
#include <algorithm>
#include <cmath>

#include "velmora/drawing/overview_map.h"
#include "velmora/drawing/plan_parts.h"
#include "velmora/drawing/plan_view.h"
#include "velmora/drawing/report.h"
#include "velmora/drawing/report_plan.h"

namespace velmora::drawing {
namespace {

constexpr double kMapMargin = 40;  // mm, for labels
constexpr double kWholeSheet = 400;
constexpr size_t kMostLabelled = 20'000;

struct MapSheet {
  explicit MapSheet(const ReportPlan& plan) {
    Interval eastings;
    Interval northings;
    const auto add = [&](const PlanePoint& p) {
      eastings.Add(p.h);
      northings.Add(p.v);
    };
    for (const PlanePoint& p : PlanOutline(plan.report.road, plan.course.Path())) add(p);
    for (size_t i = 0; i < plan.frames.size(); ++i)
      for (const PlanePoint& p : OutlineOfStrip(plan, i)) add(p);
    empty = !(eastings.low <= eastings.high);
    if (empty) add({0, 0});
    scale = plan.room.scale > 0
                ? plan.room.scale
                : StandardScale(1000 * std::max(eastings.Size(), northings.Size()) / kWholeSheet);
    position.metres = scale / 1000;
    position.west = eastings.low - kMapMargin * position.metres;
    position.north = northings.high + kMapMargin * position.metres;
    size = {0, 0, eastings.Size() / position.metres + 2 * kMapMargin,
            northings.Size() / position.metres + 2 * kMapMargin};
  }

  bool empty;
  double scale;
  MapPosition position;
  SheetRect size;
};

}  // namespace

MapPosition PositionOfReportMap(const Report& report) { return MapSheet(ReportPlan(report)).position; }

ReportSummary DrawReportMap(const Report& report, Canvas& canvas) {
  const ReportPlan plan(report);
  const MapSheet map(plan);
  canvas.BeginSheet(report.road.name.empty() ? "Road without a name" : report.road.name, map.size.width,
                    map.size.height);
  if (map.empty) {
    canvas.Text({kMapMargin, kMapMargin}, "Nothing to draw", {.size = kHeadingSize}, kText);
    return {1, map.scale, 0, plan.Notes()};
  }
  const PlanFrame frame(map.scale, 0, {map.position.west, map.position.north}, {0, 0});
  Obstacles obstacles(map.size);
  const PlanSheet sheet{canvas, map.size, frame, plan.course.Path(), obstacles, report.road.km_stations};
  std::vector<const PlotBoring*> all;
  for (const PlotBoring& boring : report.road.borings) all.push_back(&boring);
  const PlanBorings borings = BoringsOnPlan(sheet, all, kMostLabelled, kMostLabelled);
  ReserveLine(sheet);
  ReserveBorings(sheet, borings);
  DrawNorthArrow(sheet);
  DrawLine(sheet);
  DrawEnds(sheet);
  DrawStations(sheet);
  DrawBorings(sheet, borings);
  const size_t without_label = LabelBorings(sheet, borings, nullptr);
  LabelRadii(sheet);
  DrawOutlines(sheet, plan);
  std::vector<std::string> notes = plan.Notes();
  if (without_label > 0) notes.push_back("Not labelled: " + std::to_string(without_label));
  if (!borings.outside.empty()) notes.push_back("Outside the map: " + std::to_string(borings.outside.size()));
  return {1, map.scale, 0, std::move(notes)};
}

}  // namespace velmora::drawing
