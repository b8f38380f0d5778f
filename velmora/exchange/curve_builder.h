// Points with bulges from the elements of a curve: straights, and arcs given by a point on them.
#ifndef VELMORA_EXCHANGE_CURVE_BUILDER_H_
#define VELMORA_EXCHANGE_CURVE_BUILDER_H_

#include <optional>
#include <string>
#include <vector>

#include "velmora/alignment/geometry.h"

namespace velmora::exchange {

// A point of a curve; `at` is easting and northing, in a profile station and level.
struct CurvePoint {
  PlanePoint at;
  std::optional<double> station;
};

// Each call returns false, with Problem, when the curve cannot be an alignment.
class CurveBuilder {
 public:
  // The first point of a part. Parts join end to end, within kJoin metres.
  static constexpr double kJoin = 0.001;
  [[nodiscard]] bool Start(const CurvePoint& point);
  [[nodiscard]] bool LineTo(const CurvePoint& point);
  // A middle point whose station does not lie between those of the ends as its place does becomes a point of
  // its own.
  [[nodiscard]] bool ArcTo(const CurvePoint& middle, const CurvePoint& point);

  const std::string& Problem() const { return problem_; }
  // Whether every point had a station; without one `sek` is 0.
  bool HasStations() const { return has_stations_ && !points_.empty(); }
  std::vector<kovltype> Take();

 private:
  bool Append(const CurvePoint& point, double bulge_before);

  std::vector<kovltype> points_;
  bool has_stations_ = true;
  std::string problem_;
};

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_CURVE_BUILDER_H_
