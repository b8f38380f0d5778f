// Several roads as one plan: their points one after the other, with a point between two roads that is farther
// away than any other. The segments to and from it belong to no road.
#ifndef VELMORA_LOCATOR_MERGED_ROADS_H_
#define VELMORA_LOCATOR_MERGED_ROADS_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "velmora/alignment/alignment_point.h"

namespace velmora {

using RoadPoints = std::span<const kovltype>;

struct MergedRoads {
  // A road's vertices in the plan; none (first above last) where it is not part of it.
  struct Range {
    size_t first = 1;
    size_t last = 0;
  };

  std::vector<kovltype> points;
  std::vector<std::uint32_t> marks;  // of the segment from each point on (PlanSnapshot)
  std::vector<Range> ranges;         // by the road's number
};

// The roads of two points or more for which `takes` holds, in an order in which neighbours lie near each
// other. A road's number is its position in `roads`.
MergedRoads MergeRoads(std::span<const RoadPoints> roads, const std::vector<bool>& takes);

}  // namespace velmora

#endif  // VELMORA_LOCATOR_MERGED_ROADS_H_
