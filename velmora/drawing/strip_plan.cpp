#include "velmora/drawing/strip_plan.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "velmora/alignment/station_text.h"
#include "velmora/drawing/plan_parts.h"

namespace velmora::drawing {
namespace {

constexpr double kMatchReach = 45;  // mm of a match line to either side of the road

struct TurnedMap {
  double c;
  double s;
  SheetPoint operator()(PlanePoint p) const { return {c * p.h - s * p.v, s * p.h + c * p.v}; }
  PlanePoint Back(SheetPoint p) const { return {c * p.x + s * p.y, -s * p.x + c * p.y}; }
};

// The part of the line through `at` along `unit` that lies within the rectangle and the reach.
std::pair<SheetPoint, SheetPoint> Within(const SheetRect& r, SheetPoint at, SheetPoint unit, double reach) {
  double low = -reach;
  double high = reach;
  const auto limit = [&](double from, double direction, double least, double most) {
    if (std::fabs(direction) < 1e-9) return;
    const double a = (least - from) / direction;
    const double b = (most - from) / direction;
    low = std::max(low, std::min(a, b));
    high = std::min(high, std::max(a, b));
  };
  limit(at.x, unit.x, r.x, r.Right());
  limit(at.y, unit.y, r.y, r.Bottom());
  high = std::max(high, low);
  return {{at.x + low * unit.x, at.y + low * unit.y}, {at.x + high * unit.x, at.y + high * unit.y}};
}

// Across the road at an end of the strip, with its station and the sheet on which the road goes on.
void DrawMatchLine(const PlanSheet& sheet, const StripContent& content, bool at_end) {
  const Strip& strip = content.strip;
  const double along = at_end ? strip.to : strip.from;
  if (at_end ? along >= content.course.Length() : along <= 0) return;  // the road's own end
  const PathPosition place = content.course.At(along);
  const SheetPoint at = sheet.frame.ToSheet(place.point);
  const SheetPoint forward = sheet.frame.Direction(place.direction);
  const SheetPoint across = {forward.y, -forward.x};
  auto [a, b] = Within(sheet.panel.Inset(1), at, across, kMatchReach);
  sheet.canvas.Line(a, b, kMatchLine);
  sheet.obstacles.AddLine(LineBox(a, b, 0.4));

  const double station = at_end ? strip.last_station : strip.first_station;
  std::vector<std::string> texts = {"Match line " + RoundStationText(station, sheet.km)};
  if (const auto next = at_end ? content.after : content.before)
    texts.push_back((at_end ? "continues on sheet " : "continued from sheet ") + std::to_string(*next));
  // Beside the line, in the overlap rather than on the strip: one text on either side of the road.
  if (a.y > b.y) std::swap(a, b);
  const double length = std::hypot(b.x - a.x, b.y - a.y);
  if (!(length > 0)) return;
  const double out = at_end ? 2.0 : -2.0;
  for (size_t i = 0; i < texts.size(); ++i) {
    const double half = TextWidth(texts[i], kLabelSize) / 2;
    std::vector<RotatedBox> boxes;
    for (const double aside : {out, -out}) {
      for (const double slide : {1.0, 6.0, 12.0, 20.0, 30.0, 45.0, 60.0}) {
        const double from = half + slide;
        if (from + half > length) break;
        const double part = (i == 0 ? from : length - from) / length;
        const SheetPoint middle = {a.x + (b.x - a.x) * part + aside * forward.x,
                                   a.y + (b.y - a.y) * part + aside * forward.y};
        boxes.push_back(TextBox(middle, texts[i], kLabelSize, ReadableAngle(b.x - a.x, b.y - a.y)));
      }
    }
    WriteInFirst(sheet.canvas, sheet.obstacles, boxes, texts[i], kLabelSize, kMatchText);
  }
}

}  // namespace

PlanFrame FrameOfStrip(const StripContent& content) {
  const StripRoom& room = content.room;
  const Strip& strip = content.strip;
  const TurnedMap turned = {std::cos(strip.angle), std::sin(strip.angle)};
  const SheetRect extent = strip.ExtentAt(strip.angle);
  Interval up = {extent.y, extent.Bottom()};
  // As many of the borings, the nearest first, as there is height for.
  std::vector<const PlotBoring*> nearest(content.borings.begin(), content.borings.end());
  std::stable_sort(nearest.begin(), nearest.end(), [](const PlotBoring* a, const PlotBoring* b) {
    return std::fabs(a->offset) < std::fabs(b->offset);
  });
  const double most = room.Metres(room.plan.height);
  for (const PlotBoring* boring : nearest) {
    if (!boring->placed || !IsDrawable(boring->easting) || !IsDrawable(boring->northing)) continue;
    const double y = turned({boring->easting, boring->northing}).y;
    Interval with = up;
    with.Add(y);
    if (with.Size() <= most) up = with;
  }
  double left = room.plan.x;
  const double width = extent.width * 1000 / room.scale;
  const double spare = std::max(0.0, room.plan.width - width);
  if (content.centred) {
    left += spare / 2;
  } else {
    const double before = strip.is_turned ? strip.end - strip.to : strip.from - strip.begin;
    left += std::clamp(room.overlap - before * 1000 / room.scale, 0.0, spare);
  }
  const SheetPoint corner = {left, room.plan.y + room.plan.height / 2};
  return {room.scale, strip.angle, turned.Back({extent.x, up.Middle()}), corner};
}

StripPlanSummary DrawStripPlan(Canvas& canvas, const SheetRect& panel, const StripContent& content,
                               BoringKey* key) {
  const PlanFrame frame = FrameOfStrip(content);
  const PlanPath path(content.strip.line);
  Obstacles obstacles(panel.Inset(0.5));
  const PlanSheet sheet{canvas, panel, frame, path, obstacles, content.input.km_stations};
  // The order matters: each part avoids what was placed before it.
  PlanBorings borings = BoringsOnPlan(sheet, content.borings);
  ReserveLine(sheet);
  ReserveBorings(sheet, borings);
  DrawNorthArrow(sheet);
  DrawMatchLine(sheet, content, false);
  DrawMatchLine(sheet, content, true);
  DrawGrid(sheet);
  DrawLine(sheet);
  const bool starts = content.strip.begin <= 0;
  const bool ends = content.strip.end >= content.course.Length();
  DrawEnds(sheet, content.strip.is_turned ? ends : starts, content.strip.is_turned ? starts : ends);
  DrawStations(sheet);
  DrawBorings(sheet, borings);
  const size_t without_label = LabelBorings(sheet, borings, key);
  LabelRadii(sheet);
  canvas.Rectangle(panel, kHairline);
  return {.outside = std::move(borings.outside),
          .without_label = without_label,
          .dots = !borings.circled,
          .strays = std::any_of(borings.on_sheet.begin(), borings.on_sheet.end(),
                                [](const BoringOnPlan& b) { return !b.boring->HasOffset(); })};
}

}  // namespace velmora::drawing
