#include "velmora/drawing/html_data.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "velmora/drawing/markup_text.h"
#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/profile_geometry.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr int kPointDecimals = 6;
constexpr int kBoringDecimals = 4;

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

}  // namespace velmora::drawing
