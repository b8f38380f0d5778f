// The segments that can be nearest to some point of a cell of the ground.
#ifndef VELMORA_LOCATOR_TILE_CANDIDATES_H_
#define VELMORA_LOCATOR_TILE_CANDIDATES_H_

#include <array>
#include <cstddef>
#include <cstdint>

#include "velmora/alignment/geometry.h"
#include "velmora/locator/plan_snapshot.h"

namespace velmora {

struct SegmentRun {
  std::uint32_t first;
  std::uint32_t count;
};

// Distances of a point from `count` chords, the first at `first`, each prolonged by kChordReach at both
// ends. Writes up to kChordsAtOnce - 1 elements more than asked for.
inline constexpr size_t kChordsAtOnce = 4;
using ChordDistances = void (*)(const PlanSnapshot& plan, PlanePoint p, size_t first, size_t count,
                                double* distances);

// The candidates of a tile of cells, found once; from them those of each cell.
class TileCandidates {
 public:
  // For all points within `radius` of `middle`.
  TileCandidates(const PlanSnapshot& plan, ChordDistances distances, PlanePoint middle, double radius);

  static constexpr size_t kMostRuns = 16;
  struct Candidates {
    // Every other segment is farther than this from each of the points. 0 when there are too many to be
    // worth a list.
    double reach = 0;
    // Whether no candidate's foot is nearer than its chord less its slack: false beside an axis quirk.
    bool chords_bound_feet = true;
    size_t runs = 0;
    std::array<SegmentRun, kMostRuns> run;  // in order

    bool Add(std::uint32_t segment, std::uint32_t* total);
  };
  // For points within `radius` of `middle`, a circle inside the tile's.
  void ForCircle(PlanePoint middle, double radius, Candidates* found) const;

 private:
  static constexpr size_t kMostSegments = 256;
  static constexpr size_t kMostQuirks = 64;

  void Collect(PlanePoint middle, double radius);
  void CollectAxisQuirks(PlanePoint middle, double reach);

  const PlanSnapshot* plan_;
  ChordDistances distances_;
  bool too_many_ = false;
  size_t runs_ = 0;
  std::array<SegmentRun, kMostRuns> run_;  // NOLINT: filled as far as it is read
  size_t quirks_ = 0;
  std::array<const PlanSnapshot::AxisQuirk*, kMostQuirks> quirk_;  // NOLINT: likewise
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_TILE_CANDIDATES_H_
