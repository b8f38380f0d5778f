#include "velmora/drawing/bands.h"

#include <algorithm>
#include <cmath>

#include "velmora/drawing/labels.h"
#include "velmora/drawing/style.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kRise = 2.0;        // mm, of arcs from the middle
constexpr double kTextGap = 1.7;     // between a line and the middle of its text
constexpr double kLeastShown = 0.3;  // mm; shorter elements are a mark alone

}  // namespace

void DrawPlanBand(Canvas& canvas, const SheetRect& band, const Course& course, double from, double to,
                  const std::function<double(double)>& x_of) {
  const double middle = band.y + band.height / 2;
  double last_mark = -1e9;
  for (const CoursePart& part : course.Parts(from, to)) {
    const PathSegment& segment = *part.segment;
    const double first = std::clamp(x_of(part.first_station), band.x, band.Right());
    const double last = std::clamp(x_of(part.last_station), band.x, band.Right());
    const double left = std::min(first, last);
    const double right = std::max(first, last);
    if (right - left < kLeastShown) continue;
    // As seen towards higher stations.
    const double turn = segment.B().sek < segment.A().sek ? -segment.Sweep() : segment.Sweep();
    const double y = segment.Curve() ? middle + (turn < 0 ? kRise : -kRise) : middle;
    canvas.Line({left, y}, {right, y}, kBandMark);
    for (const double x : {left, right}) {
      if (x - last_mark < kLeastShown) continue;
      canvas.Line({x, band.y + 1}, {x, band.Bottom() - 1}, kBandLine);
      last_mark = x;
    }
    const double radius = segment.Curve() ? segment.Curve()->radius : 0;
    const std::string length = "L " + FormatFixed(segment.Length(), 2);
    const std::string curve = "R " + TrimmedFixed(radius, 2);
    const double room = right - left - 1;
    const double text_y = segment.Curve() && turn < 0 ? y - kTextGap
                          : segment.Curve()           ? y + kTextGap
                                                      : y - kTextGap;
    for (const std::string& text :
         {segment.Curve() ? curve + "  " + length : length, segment.Curve() ? curve : ""}) {
      if (text.empty() || TextWidth(text, kSmallSize) > room) continue;
      canvas.Text({(left + right) / 2, text_y}, text, {.size = kSmallSize}, kBandText);
      break;
    }
  }
}

}  // namespace velmora::drawing
