// The line of a road for drawing: its segments, arcs as true arcs.
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

// The line between two points that do not coincide. An arc of more than a half circle is kept as such, as in
// the search for the feet of borings, although the computation of map points takes the shorter way.
class PathSegment {
 public:
  PathSegment(const kovltype& a, const kovltype& b);

  const kovltype& A() const { return a_; }
  const kovltype& B() const { return b_; }
  // Nothing on a straight, nor on an arc that is too flat to be drawn as one.
  const std::optional<Arc>& Curve() const { return arc_; }
  // Radians, positive counter-clockwise; 0 on a straight.
  double Sweep() const { return sweep_; }
  double Length() const { return length_; }

  // From 0 at A to 1 at B.
  PathPosition At(double part) const;
  // By station, proportionally.
  PathPosition AtStation(double station) const;

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
  // Leaves out points that are not finite or too far away to be drawn.
  explicit PlanPath(std::span<const kovltype> points);

  // The points that are not left out.
  const std::vector<kovltype>& Points() const { return points_; }
  size_t LeftOut() const { return left_out_; }
  const std::vector<PathSegment>& Segments() const { return segments_; }
  double Length() const { return length_; }

  // The ends of all segments and points between them, at most `step` metres apart, or further where that
  // would be more than about `most` points.
  std::vector<PlanePoint> Samples(double step, size_t most) const;
  // The nearest of the feet on the segments and of the corners; without either, of the ends. Nothing on an
  // empty line.
  std::optional<PlanePoint> Nearest(PlanePoint p) const;

 private:
  std::vector<kovltype> points_;
  std::vector<PathSegment> segments_;
  size_t left_out_ = 0;
  double length_ = 0;
};

// Whether a number, or a point whatever its bulge, can be drawn.
bool IsDrawable(double value);
bool IsDrawable(const kovltype& point);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PLAN_PATH_H_
