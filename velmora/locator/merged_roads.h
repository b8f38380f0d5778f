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
bool HasArcs(RoadPoints points);

// A segment's road among several: its number and whether its stations descend.
constexpr std::uint32_t RoadMark(std::uint32_t road, bool descending) {
  return road << 1 | (descending ? 1U : 0U);
}
constexpr std::uint32_t RoadOfMark(std::uint32_t mark) { return mark >> 1; }
constexpr bool IsDescendingMark(std::uint32_t mark) { return (mark & 1) != 0; }

struct MergedRoads {
  // A road's vertices in the plan; none (first above last) where it is not part of it.
  struct VertexRange {
    size_t first = 1;
    size_t last = 0;
  };
  struct Piece {
    RoadPoints points;
    size_t begin;  // its first vertex in the plan, a multiple of BoundTree::kFan
    std::uint32_t mark;
    bool has_arcs;
  };

  std::vector<Piece> pieces;        // in the order of the plan
  size_t vertices = 0;              // of the plan, with those between the roads
  std::vector<VertexRange> ranges;  // by the road's number
};

// The roads of two points or more for which `takes` holds, in an order in which neighbours lie near each
// other. A road's number is its position in `roads`; their points must outlive what is returned. By `threads`
// threads (0: one a processor).
MergedRoads MergeRoads(std::span<const RoadPoints> roads, const std::vector<bool>& takes, int threads = 1);

}  // namespace velmora

#endif  // VELMORA_LOCATOR_MERGED_ROADS_H_
