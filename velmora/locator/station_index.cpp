#include "velmora/locator/station_index.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "velmora/alignment/geometry.h"

namespace velmora {

StationIndex::StationIndex(std::vector<double> values) : largest_(std::move(values)) {
  double largest = -std::numeric_limits<double>::infinity();
  for (double& value : largest_) {
    if (value > largest) largest = value;
    value = largest;
  }
  if (largest_.size() < 2) return;
  const double steps = static_cast<double>(largest_.size());
  low_ = largest_.front();
  per_step_ = steps / (largest_.back() - low_);
  if (!std::isfinite(low_) || !std::isfinite(per_step_)) {
    per_step_ = 0;
    return;
  }
  // The same rounding as in a look-up, so that a step's values lie between its two starts.
  starts_.resize(largest_.size() + 2, largest_.size());
  size_t at = 0;
  for (size_t step = 0; step < starts_.size(); ++step) {
    while (at < largest_.size() && (largest_[at] - low_) * per_step_ < static_cast<double>(step)) ++at;
    starts_[step] = at;
  }
}

size_t StationIndex::FirstAbove(double value) const {
  auto begin = largest_.begin();
  auto end = largest_.end();
  const double step = (value - low_) * per_step_;
  if (step >= 0 && step < static_cast<double>(starts_.size()) - 1) {
    // Values of later steps are above this one.
    const auto k = static_cast<size_t>(step);
    end = begin + static_cast<std::ptrdiff_t>(std::min(starts_[k + 1] + 1, largest_.size()));
    begin += static_cast<std::ptrdiff_t>(starts_[k]);
  }
  return static_cast<size_t>(std::upper_bound(begin, end, value) - largest_.begin());
}

// The walk of Vag2xy ends at the first of these values above the station, from the second point on; both have
// their signs turned where stations fall.
StationIndex PlanStations(const std::vector<kovltype>& plan) {
  const bool descending = IsDescending(plan);
  std::vector<double> ends;
  for (size_t i = 1; i < plan.size(); ++i)
    ends.push_back(descending ? -(plan[i].sek - kStationTolerance) : plan[i].sek + kStationTolerance);
  return StationIndex(std::move(ends));
}

std::optional<size_t> SegmentAtStation(const std::vector<kovltype>& plan, const StationIndex& stations,
                                       double station) {
  if (plan.size() < 2) return std::nullopt;
  const bool descending = IsDescending(plan);
  const double first = plan[0].sek;
  if (descending ? station > first + kStationTolerance : station < first - kStationTolerance)
    return std::nullopt;
  const size_t segment = stations.FirstAbove(descending ? -station : station);
  if (segment + 1 >= plan.size()) return std::nullopt;
  return segment;
}

}  // namespace velmora
