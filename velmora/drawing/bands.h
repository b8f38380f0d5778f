// Bands below a profile: the straights and arcs of the plan over the stations.
#ifndef VELMORA_DRAWING_BANDS_H_
#define VELMORA_DRAWING_BANDS_H_

#include <functional>
#include <string>

#include "velmora/drawing/canvas.h"
#include "velmora/drawing/course.h"

namespace velmora::drawing {

inline constexpr double kBandHeight = 8;  // mm

// Straights run along the middle of the band, arcs to the right below it and arcs to the left above it; each
// with its length L and, of arcs, the radius R. `x_of` gives the place of a station on the sheet; the parts
// of the course between `from` and `to` are drawn.
void DrawPlanBand(Canvas& canvas, const SheetRect& band, const Course& course, double from, double to,
                  const std::function<double(double)>& x_of);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_BANDS_H_
