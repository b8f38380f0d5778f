// Which segments can be nearest to some point of a square of the ground.
#ifndef VELMORA_ALIGNMENT_NEAR_CANDIDATES_H_
#define VELMORA_ALIGNMENT_NEAR_CANDIDATES_H_

#include <cstdint>
#include <vector>

#include "velmora/alignment/geometry.h"
#include "velmora/alignment/plan_snapshot.h"

namespace velmora {

struct SegmentRun {
  std::uint32_t first;
  std::uint32_t count;
};

// The candidates for a tile of squares, looked up once; from them those of each square.
class TileCandidates {
 public:
  // For all points within `radius` of `middle`.
  TileCandidates(const PlanSnapshot& plan, PlanePoint middle, double radius);

  struct Candidates {
    std::vector<SegmentRun> runs;  // in order
    // Whatever is not among them is farther than this from each of the points. 0 when there are too many to
    // be worth a list.
    double reach = 0;
    // Whether a candidate's foot is never nearer than its chord less its pad: false beside an axis place.
    bool chords_tell = true;
  };
  // For points within `radius` of `middle`, a circle inside the tile's.
  Candidates ForCircle(PlanePoint middle, double radius) const;

 private:
  const PlanSnapshot* plan_;
  bool too_many_ = false;
  std::vector<std::uint32_t> segments_;  // in order
  std::vector<const PlanSnapshot::AxisPlace*> axis_places_;
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_NEAR_CANDIDATES_H_
