// How the map lies on the sheet: scale, rotation and position.
#ifndef VELMORA_DRAWING_PLAN_FRAME_H_
#define VELMORA_DRAWING_PLAN_FRAME_H_

#include <span>
#include <vector>

#include "velmora/alignment/geometry.h"
#include "velmora/drawing/style.h"

namespace velmora::drawing {

// The corners of the points' convex hull, which decide the space they need at any rotation.
std::vector<PlanePoint> ConvexHull(std::vector<PlanePoint> points);

class PlanFrame {
 public:
  // The largest scale of `usual`, NiceScale or StandardScale, at which all `points` fit into `panel`. North
  // is up unless rotating the map gains much; then the least rotation that gives the scale, of at most a
  // right angle.
  PlanFrame(std::span<const PlanePoint> points, const SheetRect& panel, double (*usual)(double least));

  // At this scale, the map turned by `angle`, in radians, counter-clockwise, so that `p` lies at `at`.
  PlanFrame(double scale, double angle, PlanePoint p, SheetPoint at);

  double Scale() const { return scale_; }  // the N of 1:N
  double Millimetres(double metres) const { return metres * 1000 / scale_; }
  double Metres(double millimetres) const { return millimetres * scale_ / 1000; }

  SheetPoint ToSheet(PlanePoint p) const;
  PlanePoint FromSheet(SheetPoint p) const;
  // A unit vector of the plane as one on the sheet.
  SheetPoint Direction(PlanePoint unit) const;

 private:
  double scale_;
  double cos_ = 1;
  double sin_ = 0;
  PlanePoint middle_{0, 0};
  SheetPoint sheet_middle_;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PLAN_FRAME_H_
