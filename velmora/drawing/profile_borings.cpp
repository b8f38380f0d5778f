#include "velmora/drawing/profile_borings.h"

#include <algorithm>
#include <cmath>

namespace velmora::drawing {
namespace {

constexpr double kLongestName = 20;  // mm

// Where the road's line passes a boring; the boring's own place where it does not.
double LineAt(const ProfileSheet& sheet, const BoringInProfile& b) {
  const auto level = sheet.line.LevelAt(b.boring->station);
  return level ? sheet.frame.ToSheet({b.boring->station, *level}).y : b.at.y;
}

// Tries the places of a name, near ones first, those over the marker before those below.
template <class Take>
bool TakeNearest(const Take& take) {
  for (const bool over : {true, false}) {
    for (const double gap : {1.2, 2.0, 2.8, 3.6}) {
      if (take(over, gap, 0.0)) return true;
    }
    for (const double gap : {2.4, 4.0, 6.0, 8.0, 11.0, 14.0, 18.0, 23.0, 28.0}) {
      for (const double aside : {0.0, 2.9, -2.9, 5.8, -5.8}) {
        if (take(over, gap, aside)) return true;
      }
    }
  }
  return false;
}

}  // namespace

std::vector<BoringInProfile> BoringsIn(const ProfileSheet& sheet, const PlotInput& input, size_t* off_sheet) {
  std::vector<BoringInProfile> borings;
  for (const PlotBoring& boring : input.borings) {
    if (!boring.placed || !boring.level) continue;
    const SheetPoint at = IsDrawable(boring.station) && IsDrawable(*boring.level)
                              ? sheet.frame.ToSheet({boring.station, *boring.level})
                              : SheetPoint{-1, -1};
    if (!sheet.plot.Holds(at)) {
      ++*off_sheet;
      continue;
    }
    borings.push_back({&boring, at});
  }
  return borings;
}

void DrawMarkers(const ProfileSheet& sheet, const std::vector<BoringInProfile>& borings) {
  constexpr double kHalfCap = 1.3;  // mm
  {
    Svg::Group group(sheet.svg, kBoringLine);
    for (const BoringInProfile& b : borings) sheet.svg.Line(b.at, {b.at.x, LineAt(sheet, b)});
  }
  Svg::Group group(sheet.svg, "fill=\"none\" stroke=\"#174f8c\" stroke-width=\"0.45\"");
  for (const BoringInProfile& b : borings) {
    const SheetPoint left = {b.at.x - kHalfCap, b.at.y};
    const SheetPoint right = {b.at.x + kHalfCap, b.at.y};
    sheet.svg.Line(left, right);
    sheet.room.AddSolid(LineBox(left, right, 0.5));
    sheet.room.AddLine(LineBox(b.at, {b.at.x, LineAt(sheet, b)}, 0.3));
  }
}

size_t LabelMarkers(const ProfileSheet& sheet, const std::vector<BoringInProfile>& borings) {
  size_t without = 0;
  for (const BoringInProfile& b : borings) {
    const std::string id = FitText(b.boring->id, kLabelSize, kLongestName);
    const double half = TextWidth(id, kLabelSize) / 2;
    const double line_y = LineAt(sheet, b);
    const double top = std::min(b.at.y, line_y);
    const double bottom = std::max(b.at.y, line_y);
    // Takes the place if it is free, with a line to it where it is not right over the marker.
    const auto take = [&](bool over, double gap, double aside) {
      const double y = over ? top - gap - half : bottom + gap + half;
      const Box box = TextBox({b.at.x + aside, y}, id, kLabelSize, -90);
      if (!sheet.room.IsFree(box)) return false;
      const SheetPoint start = {b.at.x, over ? top - 0.5 : bottom + 0.5};
      const SheetPoint end = {box.centre.x, over ? y + half + 0.3 : y - half - 0.3};
      const bool moved = gap > 2 || aside != 0;
      const Box leader = LineBox(start, end, 0.2);
      if (moved && !sheet.room.IsOpen(leader)) return false;
      sheet.room.AddSolid(box);
      if (moved) {
        sheet.room.AddLine(leader);
        Svg::Group group(sheet.svg, kHairline);
        sheet.svg.Line(start, end);
      }
      Svg::Group group(sheet.svg, kBoringText);
      sheet.svg.Text(box.centre, id, {.size = kLabelSize, .angle = -90});
      return true;
    };
    if (!TakeNearest(take)) ++without;
  }
  return without;
}

void DrawLevelDots(const ProfileSheet& sheet, const std::vector<BoringInProfile>& borings) {
  constexpr size_t kMostReserved = 1500;  // more are everywhere, and labels are written over them
  SvgPath dots;
  for (const BoringInProfile& b : borings) {
    dots.MoveTo(b.at).Close();
    if (borings.size() <= kMostReserved) sheet.room.AddLine({b.at, 0.4, 0.4});
  }
  Svg::Group group(sheet.svg, kBoringDots);
  sheet.svg.Path(dots);
}

}  // namespace velmora::drawing
