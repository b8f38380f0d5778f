// A road as its sheets follow it: by rising stations, measured along the line.
#ifndef VELMORA_DRAWING_COURSE_H_
#define VELMORA_DRAWING_COURSE_H_

#include <optional>
#include <vector>

#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/scale.h"

namespace velmora::drawing {

// The points in the other direction, with the same line between them.
std::vector<kovltype> Reversed(std::span<const kovltype> points);

// A part of the course without a jump of the stations, along which they rise, or fall where the road's own
// list turns back.
struct Stretch {
  double from;  // m along the course
  double to;
  double first_station;
  double last_station;

  bool Falls() const { return last_station < first_station; }
  Interval Stations() const;
};

// A segment, or a part of one.
struct CoursePart {
  const PathSegment* segment;
  double first_station;
  double last_station;
};

class Course {
 public:
  // A road whose stations fall is followed from its last point.
  explicit Course(std::span<const kovltype> points);

  const PlanPath& Path() const { return path_; }
  double Length() const { return path_.Length(); }
  // Stretches have a length; those shorter than the drawing can show are parts of the ones before them.
  const std::vector<Stretch>& Stretches() const { return stretches_; }

  // Metres along the course are clamped to its ends.
  PathPosition At(double along) const;
  double StationAt(double along) const;
  // The metres along the course of a station in a stretch.
  double AlongOf(const Stretch& stretch, double station) const;
  // The metres along the course of the point of this station, of several the one nearest to `p`.
  std::optional<double> Find(double station, PlanePoint p) const;
  // The line between two places, arcs as parts of the same circles.
  std::vector<kovltype> Cut(double from, double to) const;
  // The segments between them, of which the first and the last may be parts.
  std::vector<CoursePart> Parts(double from, double to) const;

 private:
  size_t SegmentAt(double along) const;

  PlanPath path_;
  std::vector<double> starts_;  // of the segments, m along the course
  std::vector<Stretch> stretches_;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_COURSE_H_
