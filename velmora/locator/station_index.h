// Finds the segment at which a walk along stations would end.
#ifndef VELMORA_LOCATOR_STATION_INDEX_H_
#define VELMORA_LOCATOR_STATION_INDEX_H_

#include <cstddef>
#include <optional>
#include <vector>

#include "velmora/alignment/alignment_point.h"

namespace velmora {

// Over values of which each may lie below the one before: the first that is above another value is also the
// first at which the largest so far is.
class StationIndex {
 public:
  StationIndex() = default;
  // Values that are not numbers are above no other.
  explicit StationIndex(std::vector<double> values);

  // The position of the first value above `value`; the number of values when there is none.
  size_t FirstAbove(double value) const;

 private:
  std::vector<double> largest_;  // so far
  std::vector<size_t> starts_;   // for equal steps of value: the first above the step's lower end
  double low_ = 0;
  double per_step_ = 0;
};

// Of the ends of a plan's segments, for SegmentAtStation.
StationIndex PlanStations(const std::vector<kovltype>& plan);
// The segment on which CVaglinje::Vag2xy places a station.
std::optional<size_t> SegmentAtStation(const std::vector<kovltype>& plan, const StationIndex& stations,
                                       double station);

}  // namespace velmora

#endif  // VELMORA_LOCATOR_STATION_INDEX_H_
