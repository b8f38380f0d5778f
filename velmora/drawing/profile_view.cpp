#include "velmora/drawing/profile_view.h"

#include <algorithm>
#include <cmath>

#include "velmora/drawing/labels.h"
#include "velmora/drawing/profile_parts.h"
#include "velmora/drawing/scale.h"
#include "velmora/drawing/style.h"

namespace velmora::drawing {
namespace {

constexpr double kLeftMargin = 20;  // mm, for the levels
constexpr double kRightMargin = 10;
constexpr double kTopMargin = 10;
constexpr double kBelow = 9;   // mm between the lowest level and the axis
constexpr double kAbove = 20;  // mm over the highest, for names
Interval StationsOf(const ProfileLine& line, const PlanPath& path) {
  Interval profile;
  for (const kovltype& point : line.Points()) profile.Add(point.y);
  // The plan's stations too, unless they are another road's.
  Interval both = profile;
  for (const kovltype& point : path.Points()) both.Add(point.sek);
  return both.Size() <= 2 * profile.Size() ? both : profile;
}

Interval LevelsOf(const std::vector<ProfilePoint>& samples, const PlotInput& input) {
  constexpr double kNear = 10;  // m; a level further away is taken for a mistake
  Interval levels;
  for (const ProfilePoint& sample : samples) levels.Add(sample.level);
  const Interval reach = levels.WidenedBy(std::max(kNear, levels.Size()));
  for (const PlotBoring& boring : input.borings) {
    if (boring.placed && boring.level && reach.Contains(*boring.level)) levels.Add(*boring.level);
  }
  return levels;
}

}  // namespace

ProfileSummary DrawProfile(Canvas& canvas, const SheetRect& panel, const PlotInput& input,
                           const PlanPath& path, const ProfileLine& profile, double plan_scale,
                           BoringKey* key) {
  const SheetRect plot = {panel.x + kLeftMargin, panel.y + kTopMargin,
                          panel.width - kLeftMargin - kRightMargin,
                          panel.height - kTopMargin - 2 * kProfileRow - 3};
  const Interval stations = StationsOf(profile, path);
  const double fine = stations.Size() / plot.width;  // m in a millimetre, or a little less
  const Interval levels = LevelsOf(profile.Samples(fine), input);
  const ProfileFrame frame(stations, levels, plot, kBelow, kAbove, plan_scale);

  const double times = frame.Exaggeration();
  const std::string scales = "lengths " + ScaleText(frame.LengthScale()) + ", heights " +
                             ScaleText(frame.HeightScale()) +
                             (times > 1 ? ", " + PlainNumber(times) + " times exaggerated" : "");
  canvas.Text({panel.x + 4, panel.y + 5}, "Profile: " + scales,
              {.size = kHeadingSize, .anchor = TextAnchor::kStart, .bold = true}, kText);

  ProfileSummary summary;
  Obstacles obstacles(plot.Inset(0.5));
  const ProfileSheet sheet{canvas, plot, frame, profile, obstacles, input.km_stations, kLeftMargin - 3};
  DrawLevelLines(sheet);
  DrawStationAxis(sheet);
  std::vector<const PlotBoring*> all;
  for (const PlotBoring& boring : input.borings) all.push_back(&boring);
  BoringsOfProfile found = BoringsInProfile(sheet, all);
  summary.off_sheet = found.outside.size();
  DrawProfileLine(sheet, profile.Samples(frame.MetresAlong(1)));
  ReserveMarkers(sheet, found.in_plot);
  DrawMarkers(sheet, found.in_plot);
  DrawVertices(sheet);
  summary.without_label = LabelMarkers(sheet, found.in_plot, key);
  return summary;
}

}  // namespace velmora::drawing
