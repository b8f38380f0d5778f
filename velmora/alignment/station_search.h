// The rules by which the station and offset of a point are chosen among the segments and vertices of a plan,
// shared by the walk over the list (CVaglinje::Vagstv) and the snapshot (Locator).
#ifndef VELMORA_ALIGNMENT_STATION_SEARCH_H_
#define VELMORA_ALIGNMENT_STATION_SEARCH_H_

#include <cmath>
#include <cstddef>

#include "velmora/alignment/alignment_point.h"
#include "velmora/alignment/geometry.h"

namespace velmora {

inline constexpr double kNothingBest =
    1.1e9;  // m; a best offset above kFoundBelow means that nothing was found
inline constexpr double kFoundBelow = 1e9;

// The nearest foot among the segments considered, in any order: of equal offsets the segment with the lowest
// index wins.
struct StationSearch {
  bool descending;
  double station;  // Seknoll until a segment has a foot
  double offset = 0;
  double best = kNothingBest;  // |offset|
  size_t segment = 0;          // of the best

  void Consider(size_t index, const kovltype& a, const Foot& foot) {
    const double distance = std::fabs(foot.offset);
    if (foot.place != FootPlace::kInside) return;
    if (!(distance < best || (distance == best && index < segment))) return;
    best = distance;
    segment = index;
    station = descending ? a.sek - foot.along : a.sek + foot.along;
    offset = descending ? -foot.offset : foot.offset;
  }
  int Result() const { return best > kFoundBelow ? -1 : 0; }
};

// The offset of a point whose nearest vertex is `vertex`, `distance` away: to the left where the straight
// from the vertex before it says so. Its sign does not change on descending stations.
inline double OffsetFromVertex(const kovltype* before, const kovltype& vertex, PlanePoint p,
                               double distance) {
  const bool left = before != nullptr && FootOnStraight(InPlane(*before), InPlane(vertex), p).offset < 0;
  return left ? -distance : distance;
}

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_STATION_SEARCH_H_
