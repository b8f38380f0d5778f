// A road cut into strips, each of which fits a sheet.
#ifndef VELMORA_DRAWING_STRIPS_H_
#define VELMORA_DRAWING_STRIPS_H_

#include <vector>

#include "velmora/drawing/course.h"
#include "velmora/drawing/plan_frame.h"

namespace velmora::drawing {

// What a strip has to fit.
struct StripRoom {
  SheetRect plan;      // in which the road stays, with the overlaps
  double overlap = 0;  // mm that the road goes on beyond a match line
  double scale = 0;    // the N of 1:N

  double Metres(double millimetres) const { return millimetres * scale / 1000; }
};

struct Strip {
  double from;  // m along the course
  double to;
  double first_station;  // at `from`
  double last_station;
  bool is_turned;                // its stations fall along the course, so that the course runs to the left
  std::vector<kovltype> line;    // with the overlaps, by rising stations
  std::vector<PlanePoint> hull;  // of that line
  double begin;                  // m along the course, of the overlaps
  double end;
  double angle;  // radians, by which the map is turned on the sheet, counter-clockwise

  Interval Stations() const;
  // Of the line on the sheet, in metres along its axes, at this angle of the map.
  SheetRect ExtentAt(double angle) const;
};

// The stretches of the course, within these stations, cut at round stations; of more than `most` strips the
// first ones.
std::vector<Strip> CutStrips(const Course& course, const Interval& stations, const StripRoom& room,
                             size_t most);

// The largest usual scale at which each stretch of the course is one strip.
double ScaleOfWhole(const Course& course, const Interval& stations, StripRoom room);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_STRIPS_H_
