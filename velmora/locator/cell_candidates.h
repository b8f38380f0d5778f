// The segments that can be nearest to some point of a cell of the ground.
#ifndef VELMORA_LOCATOR_CELL_CANDIDATES_H_
#define VELMORA_LOCATOR_CELL_CANDIDATES_H_

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

// The segments near a place, in no order.
struct NearSegments {
  static constexpr size_t kMost = 256;
  struct One {
    std::uint32_t segment;
    double away;  // of its chord, less the slack
  };

  static constexpr double kFarthest = 1e6;  // m: beyond, rounding would need more room
  double nearest = kFarthest;               // the nearest segment is at most this far away
  double room;  // segments farther than the nearest by more than this are left out
  bool too_many = false;
  size_t count = 0;
  std::array<One, kMost + BoundTree::kFan> segments;  // NOLINT: filled as far as it is read

  explicit NearSegments(double more) : room(more) {}
  double Limit() const { return nearest + room; }
  void DropFarOnes();
  void Sort();  // those that are not too far
};

// Adds those near `p`, and some that are too far.
using NearSearch = void (*)(const PlanSnapshot& plan, PlanePoint p, NearSegments* found);
// Compiled for each width of vectors.
struct ChordRoutines {
  ChordDistances distances;
  NearSearch search;
};

inline constexpr std::uint32_t kLongestRun = 15;  // of a cell with only one

// The candidates of a circle of ground.
struct CellCandidates {
  static constexpr size_t kMostRuns = 16;

  // Every other segment is farther than this from each of the points. 0 when there are too many to be
  // worth a list.
  double reach = 0;
  // Whether no candidate's foot is nearer than its chord less its slack: false beside an axis quirk.
  bool chords_bound_feet = true;
  size_t runs = 0;
  std::array<SegmentRun, kMostRuns> run;  // in order; NOLINT: filled as far as it is read

  // For all points within `radius` of `middle`. `close` is any segment, better one that is not far.
  CellCandidates(const PlanSnapshot& plan, const ChordRoutines& routines, PlanePoint middle, double radius,
                 size_t close);

 private:
  // False when there are too many.
  bool ListRuns(const PlanSnapshot& plan, PlanePoint middle, NearSegments* found);
  // Adds a segment that is none of those before the last one. False when there is no room for its run.
  bool Add(std::uint32_t segment);
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_CELL_CANDIDATES_H_
