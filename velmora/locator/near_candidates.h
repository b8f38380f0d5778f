// Which segments can be nearest to some point of a square of the ground.
#ifndef VELMORA_LOCATOR_NEAR_CANDIDATES_H_
#define VELMORA_LOCATOR_NEAR_CANDIDATES_H_

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
inline constexpr size_t kChordsAtOnce = 8;
using ChordDistances = void (*)(const PlanSnapshot& plan, PlanePoint p, size_t first, size_t count,
                                double* distances);

// The candidates for a tile of squares, looked up once; from them those of each square.
class TileCandidates {
 public:
  // For all points within `radius` of `middle`.
  TileCandidates(const PlanSnapshot& plan, ChordDistances distances, PlanePoint middle, double radius);

  static constexpr size_t kMostRuns = 16;
  struct Candidates {
    // Whatever is not among them is farther than this from each of the points. 0 when there are too many to
    // be worth a list.
    double reach = 0;
    // Whether a candidate's foot is never nearer than its chord less its pad: false beside an axis place.
    bool chords_tell = true;
    size_t runs = 0;
    std::array<SegmentRun, kMostRuns> run;  // in order

    bool Add(std::uint32_t segment, std::uint32_t* total);
  };
  // For points within `radius` of `middle`, a circle inside the tile's.
  void ForCircle(PlanePoint middle, double radius, Candidates* found) const;

 private:
  static constexpr size_t kMostSegments = 256;
  static constexpr size_t kMostPlaces = 64;

  void Collect(PlanePoint middle, double radius);
  void CollectAxisPlaces(PlanePoint middle, double reach);

  const PlanSnapshot* plan_;
  ChordDistances distances_;
  bool too_many_ = false;
  size_t runs_ = 0;
  std::array<SegmentRun, kMostRuns> run_;  // NOLINT: filled as far as it is read
  size_t places_ = 0;
  std::array<const PlanSnapshot::AxisQuirk*, kMostPlaces> place_;  // NOLINT: likewise
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_NEAR_CANDIDATES_H_
