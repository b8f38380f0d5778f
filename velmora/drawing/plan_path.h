// The line of a road as the drawing runs along it: the segments that have a shape, with their true arcs.
#ifndef VELMORA_DRAWING_PLAN_PATH_H_
#define VELMORA_DRAWING_PLAN_PATH_H_

#include <optional>
#include <span>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/alignment/geometry.h"

namespace velmora::drawing {

// A place on the line and the direction of the point list there, a unit vector.
struct PathPosition {
  PlanePoint point;
  PlanePoint direction;
};

// Two points of the line, apart from one another. An arc runs as its bulge says, also where it is more than a
// half circle: so do the feet that the stations of borings come from.
class PathSegment {
 public:
  PathSegment(const kovltype& a, const kovltype& b);

  const kovltype& A() const { return a_; }
  const kovltype& B() const { return b_; }
  // Of an arc that is worth drawing as one; nothing on a straight.
  const std::optional<Arc>& Curve() const { return arc_; }
  // Radians, positive counter-clockwise; 0 on a straight.
  double Sweep() const { return sweep_; }
  double Length() const { return length_; }

  // From 0 at A to 1 at B.
  PathPosition At(double part) const;
  // By station, proportionally.
  PathPosition AtStation(double station) const;
  // The nearest point to `p`, where its foot lies on the segment.
  PlanePoint FootOf(PlanePoint p) const;

 private:
  kovltype a_;
  kovltype b_;
  std::optional<Arc> arc_;
  double start_ = 0;  // the angle from the centre to A
  double sweep_ = 0;
  double length_ = 0;
};

class PlanPath {
 public:
  // Points that are not finite, or too far out to be drawn, count as absent.
  explicit PlanPath(std::span<const kovltype> points);

  // The points that are left.
  const std::vector<kovltype>& Points() const { return points_; }
  size_t LeftOut() const { return left_out_; }
  const std::vector<PathSegment>& Segments() const { return segments_; }
  double Length() const { return length_; }

  // Points along the line: the ends of all segments and, of arcs and long straights, some between: none
  // further than `step` metres from the next, unless that took more than `most`.
  std::vector<PlanePoint> Samples(double step, size_t most) const;
  // The nearest of the feet on the segments and the corners, of the ends where there is neither; nothing
  // on an empty line.
  std::optional<PlanePoint> Nearest(PlanePoint p) const;

 private:
  std::vector<kovltype> points_;
  std::vector<PathSegment> segments_;
  size_t left_out_ = 0;
  double length_ = 0;
};

// Whether a number, and those of a point other than its bulge, can be drawn.
bool IsDrawable(double value);
bool IsDrawable(const kovltype& point);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PLAN_PATH_H_
