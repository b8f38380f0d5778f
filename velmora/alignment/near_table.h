// A table of which segments can be nearest, for squares of the ground near a plan. Squares lie four by four
// in tiles; a tile is worked out when the first point falls into it and stays. Any number of threads look
// up and fill at once; nobody waits.
//
// A square's candidates come with a reach: whatever is not among them is farther from every point of the
// square than that. So an answer that lies within the reach is the answer.
#ifndef VELMORA_ALIGNMENT_NEAR_TABLE_H_
#define VELMORA_ALIGNMENT_NEAR_TABLE_H_

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <vector>

#include "velmora/alignment/geometry.h"
#include "velmora/alignment/near_candidates.h"
#include "velmora/alignment/plan_snapshot.h"

namespace velmora {

// What a square says, in 64 bits: the reach as a float, and either a run of up to 15 consecutive segments or
// the place of a list of runs.
//   bits 32 to 63  reach, m; 0 where the trees are to be asked
//   bits 4 to 31   first segment of the run; with a count of 0 the place of the list
//   bits 0 to 3    segments in the run
using NearSquare = std::uint64_t;

// Where a point falls. The grid begins at `low`; squares count from there.
struct NearGrid {
  PlanePoint low{};
  double per_metre = 0;  // 1 / side of a square
  double columns = 0;    // along h
  double rows = 0;       // along v
  unsigned hash_shift = 63;
  std::uint64_t slot_mask = 0;

  static constexpr unsigned kTileBits = 2;
  static constexpr size_t kTileSquares = size_t{1} << (2 * kTileBits);
};

inline std::uint64_t NearTileKey(std::uint32_t column, std::uint32_t row) {
  return (std::uint64_t{column >> NearGrid::kTileBits} << 20) | (row >> NearGrid::kTileBits);
}
inline size_t NearPlaceInTile(std::uint32_t column, std::uint32_t row) {
  constexpr std::uint32_t kMask = (1u << NearGrid::kTileBits) - 1;
  return ((column & kMask) << NearGrid::kTileBits) | (row & kMask);
}
inline size_t NearSlot(const NearGrid& grid, std::uint64_t key) {
  return static_cast<size_t>((key * 0x9e3779b97f4a7c15u) >> grid.hash_shift);
}

class NearTable {
 public:
  explicit NearTable(const PlanSnapshot& plan);

  const NearGrid& Grid() const { return grid_; }
  // A slot holds a tile's key in its upper 40 bits and its page, counted from 1, in the lower 24; the squares
  // of page i begin at Squares() + i * kTileSquares.
  const std::uint64_t* Slots() const { return slots_.get(); }
  const std::uint64_t* Squares() const { return squares_.get(); }

  // The square of a point, worked out where it was not known; a reach of 0 outside the grid and when the
  // table is full.
  NearSquare Square(PlanePoint p) const;
  static double Reach(NearSquare square);
  // The candidates of a square with a reach. `single` holds the run where there is only one.
  std::span<const SegmentRun> Runs(NearSquare square, SegmentRun* single) const;

 private:
  struct Free {
    void operator()(void* memory) const { std::free(memory); }
  };
  template <class T>
  using Zeros = std::unique_ptr<T[], Free>;  // from calloc: memory that is never touched costs nothing

  NearSquare Fill(std::uint32_t column, std::uint32_t row, size_t slot) const;
  NearSquare Encode(const TileCandidates::Candidates& candidates) const;

  const PlanSnapshot* plan_;
  NearGrid grid_;
  double side_ = 0;
  size_t page_limit_ = 0;
  size_t run_limit_ = 0;
  Zeros<std::uint64_t> slots_;
  Zeros<std::uint64_t> squares_;
  Zeros<SegmentRun> runs_;  // of the lists; before each list one that counts them
  mutable std::atomic<size_t> pages_used_ = 0;
  mutable std::atomic<size_t> runs_used_ = 1;  // a list is never at 0
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_NEAR_TABLE_H_
