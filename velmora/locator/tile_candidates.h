// The segments that can be nearest to some point of a cell of the ground.
#ifndef VELMORA_LOCATOR_TILE_CANDIDATES_H_
#define VELMORA_LOCATOR_TILE_CANDIDATES_H_

#include <algorithm>
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

// The segments near a place, in order.
struct NearSegments {
  static constexpr size_t kMost = 256;
  struct One {
    std::uint32_t segment;
    double away;  // of its chord, less the slack
  };

  double nearest;  // the nearest segment is at most this far away
  double room;     // segments farther than the nearest by more than this are left out
  double limit;    // nearest + room
  bool too_many;
  size_t count;
  std::array<One, kMost + BoundTree::kFan> near;

  void Begin(double more) {
    nearest = kFarthest;
    room = more;
    limit = nearest + room;
    too_many = false;
    count = 0;
  }
  // The segments of a leaf. One of them is at most `most` away.
  void Add(std::uint32_t first, const double* away, double most) {
    if (most < nearest) {
      nearest = most;
      limit = nearest + room;
    }
    for (std::uint32_t i = 0; i < BoundTree::kFan; ++i) {
      near[count] = {first + i, away[i]};
      count += away[i] <= limit ? 1 : 0;
    }
    if (count <= kMost) return;
    DropFarOnes();
    too_many = count > kMost - BoundTree::kFan;
  }
  void End();

 private:
  static constexpr double kFarthest = 1e6;  // m: beyond, rounding would need more room

  void DropFarOnes();
};

// Finds those near `p`.
using NearSearch = void (*)(const PlanSnapshot& plan, PlanePoint p, double room, NearSegments* found);

// Compiled for each width of vectors.
struct ChordRoutines {
  ChordDistances distances;
  NearSearch near;
};

// The candidates of a circle of ground, and from them those of smaller circles in it.
class TileCandidates {
 public:
  // For all points within `radius` of `middle`.
  TileCandidates(const PlanSnapshot& plan, const ChordRoutines& routines, PlanePoint middle, double radius);

  static constexpr size_t kMostRuns = 16;
  struct Candidates {
    // Every other segment is farther than this from each of the points. 0 when there are too many to be
    // worth a list.
    double reach = 0;
    // Whether no candidate's foot is nearer than its chord less its slack: false beside an axis quirk.
    bool chords_bound_feet = true;
    size_t runs = 0;
    std::array<SegmentRun, kMostRuns> run;  // in order; NOLINT: filled as far as it is read

    bool Add(std::uint32_t segment, std::uint32_t* total);
  };
  void ForWhole(Candidates* found) const { Choose(near_, middle_, radius_, found); }
  // For points within `radius` of `middle`, a circle inside the whole.
  void ForCircle(PlanePoint middle, double radius, Candidates* found) const;

 private:
  static constexpr size_t kMostQuirks = 64;

  void CollectAxisQuirks();
  void Choose(const NearSegments& near, PlanePoint middle, double radius, Candidates* found) const;

  const PlanSnapshot* plan_;
  ChordDistances distances_;
  PlanePoint middle_;
  double radius_;
  NearSegments near_;
  size_t quirks_ = 0;
  std::array<const PlanSnapshot::AxisQuirk*, kMostQuirks> quirk_;  // NOLINT: filled as far as it is read
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_TILE_CANDIDATES_H_
