// The parts of a profile: axes, line and borings.
#ifndef VELMORA_DRAWING_PROFILE_PARTS_H_
#define VELMORA_DRAWING_PROFILE_PARTS_H_

#include <span>
#include <vector>

#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/boring_labels.h"
#include "velmora/drawing/labels.h"
#include "velmora/drawing/profile_geometry.h"

namespace velmora::drawing {

inline constexpr double kProfileRow = 5.5;  // mm, of the table below the axis

// What the parts draw on.
struct ProfileSheet {
  Canvas& canvas;
  const SheetRect& plot;
  const ProfileFrame& frame;
  const ProfileLine& line;
  Obstacles& obstacles;
  bool km;             // stations as kilometres and metres
  double left_margin;  // mm beside the plot, for the headings of the rows
  int decimals = 2;    // of levels
};

// Between lines of round levels, m.
double LevelStep(const ProfileFrame& frame);
// Lines at round levels, with the levels to the left of the plot.
void DrawLevelLines(const ProfileSheet& sheet, bool numbers = true);
// The levels of these lines inside the plot, at its left edge.
void DrawLevelNumbers(const ProfileSheet& sheet);
// Lines at round stations, the plot's outline, and two rows below it: levels of the line and stations.
void DrawStationAxis(const ProfileSheet& sheet);
void DrawProfileLine(const ProfileSheet& sheet, const std::vector<ProfilePoint>& samples);
// The profile's own points, each with its level below the line or, where that is taken, above.
void DrawVertices(const ProfileSheet& sheet);

struct BoringInProfile {
  const PlotBoring* boring;
  SheetPoint at;
  double line_y;  // of the road's line at the boring's station; of the boring itself where there is none
};
// Of the borings that have a station and a level.
struct BoringsOfProfile {
  std::vector<BoringInProfile> in_plot;
  std::vector<const PlotBoring*> outside;
};
BoringsOfProfile BoringsInProfile(const ProfileSheet& sheet, std::span<const PlotBoring* const> borings);

// A bar at each boring's level, with a line to the road's; a dot each where there are many. The dots have no
// line: their `line_y` is their own height.
void ReserveMarkers(const ProfileSheet& sheet, std::vector<BoringInProfile>& borings);
void DrawMarkers(const ProfileSheet& sheet, const std::vector<BoringInProfile>& borings);
// Returns the number of borings without a label.
size_t LabelMarkers(const ProfileSheet& sheet, const std::vector<BoringInProfile>& borings, BoringKey* key);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PROFILE_PARTS_H_
