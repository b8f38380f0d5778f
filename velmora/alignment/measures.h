// Measures of an alignment and of points beside it. Pure functions on points.
#ifndef VELMORA_ALIGNMENT_MEASURES_H_
#define VELMORA_ALIGNMENT_MEASURES_H_

#include <cstdint>
#include <optional>
#include <vector>

#include "velmora/alignment/bounding_box.h"

namespace velmora {

struct PlanMeasures {
  double length = 0;  // along straights and arcs, m
  int arcs = 0;
  std::optional<double> smallest_radius;
  double lowest_station = 0;
  double highest_station = 0;
  BoundingBox bounds{};  // arcs included
};
PlanMeasures MeasurePlan(const std::vector<kovltype>& points);

// Of the points of a profile, two at least; vertical curves can reach beyond their levels.
struct ProfileMeasures {
  double first_station = 0;  // of the first point and of the last
  double last_station = 0;
  double levels_end = 0;  // a look-up finds levels from first_station up to here, none where this is lower
  double lowest_level = 0;
  double highest_level = 0;
};
ProfileMeasures MeasureProfile(const std::vector<kovltype>& points);

// The multiples of `every` along a plan, for its marks; none for 0. Nothing when they are more than a
// million.
std::optional<std::vector<double>> StationsEach(double every, const std::vector<kovltype>& plan);

// The length of the segment from `a` to `b`: of the straight, or of the arc that `a`'s bulge describes.
double SegmentLength(const kovltype& a, const kovltype& b);

// How stations that CVaglinje::SektBerak computed differ from the lengths along the plan, and why.
struct StationErrors {
  double greatest = 0;                // m, counted from the first point
  std::optional<size_t> later_bulge;  // the first segment that its later point's bulge makes another arc
  std::optional<size_t> beside_axis;  // the first that is measured from an end beside an axis
};
StationErrors FindStationErrors(const std::vector<kovltype>& points);

// Whether two neighbouring points have this station. Returns the first of them.
std::optional<size_t> RepeatedStation(const std::vector<kovltype>& plan, double station);

// Which end of an alignment a point or a station that is not found lies off.
enum class OffEnd { kBeforeStart, kBeyondEnd, kNeither };

// For a map point that no segment and no vertex matched: off an end when that is the nearest vertex and the
// point lies behind it in the alignment's direction there.
OffEnd WhyNotFound(const std::vector<kovltype>& plan, PlanePoint p);
// The same without a search, for a point whose nearest vertex is known to be an end.
OffEnd WhyNotFoundAtEnd(const std::vector<kovltype>& plan, PlanePoint p);
// For a station without a map point; the plan is not empty.
OffEnd WhyNotFound(const std::vector<kovltype>& plan, double station);

// Notices points whose northing and easting are swapped.
class AxisCheck {
 public:
  // Points count as near the alignment within its bounds, widened by their own size and at least 1 km.
  explicit AxisCheck(const BoundingBox& bounds);
  // Counts points that are near the alignment in one way only.
  void Add(double northing, double easting);
  // Adds the counts of another check of the same alignment.
  void Add(const AxisCheck& other);
  // Whether far more points would lie near the alignment with their axes swapped.
  bool LooksSwapped() const { return near_swapped_ > 0 && near_swapped_ > 4 * near_; }
  std::int64_t Near() const { return near_; }
  std::int64_t NearSwapped() const { return near_swapped_; }

 private:
  bool IsNear(double northing, double easting) const;

  BoundingBox bounds_;
  std::int64_t near_ = 0;
  std::int64_t near_swapped_ = 0;
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_MEASURES_H_
