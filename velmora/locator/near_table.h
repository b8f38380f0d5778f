// A table of which segments can be nearest, for squares of the ground near a plan. Squares lie four by four
// in tiles; a tile is worked out when the first point falls into it and stays. Any number of threads look
// up and fill at once; nobody waits.
//
// A square's candidates come with a reach: whatever is not among them is farther from every point of the
// square than that. So an answer that lies within the reach is the answer.
#ifndef VELMORA_LOCATOR_NEAR_TABLE_H_
#define VELMORA_LOCATOR_NEAR_TABLE_H_

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <vector>

#include "velmora/alignment/geometry.h"
#include "velmora/locator/near_candidates.h"
#include "velmora/locator/plan_snapshot.h"

namespace velmora {

// What a square says, in 64 bits: the reach as a float, and either a run of up to 15 consecutive segments or
// the place of a list of runs.
//   bits 32 to 63  reach, m; 0 where the trees are to be asked
//   bits 4 to 31   first segment of the run; with a count of 0 the place of the list
//   bits 0 to 3    segments in the run
using NearSquare = std::uint64_t;
inline size_t NearRunCount(NearSquare square) { return square & 15; }
inline double NearReach(NearSquare square) {
  return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(square >> 32)));
}
// 0 for a list.
inline size_t NearRunFirst(NearSquare square) {
  return NearRunCount(square) == 0 ? 0 : static_cast<std::uint32_t>(square) >> 4;
}

// Where a point falls. The grid begins at `low`; squares count from there.
struct NearGrid {
  PlanePoint low{};
  double per_metre = 0;  // 1 / side of a square
  double columns = 0;    // along h
  double rows = 0;       // along v
  std::uint32_t tile_stride = 1;
  std::size_t slot_mask = 0;

  static constexpr int kTileBits = 2;
  static constexpr size_t kTileSquares = size_t{1} << (2 * kTileBits);
};

// A tile's key; not one of a tile for the square at (-1, -1).
inline constexpr int kNearPageBits = 24;
inline std::uint64_t NearTileKey(std::int32_t column, std::int32_t row) {
  return static_cast<std::uint64_t>(column >> NearGrid::kTileBits) << 20 ^
         static_cast<std::uint64_t>(row >> NearGrid::kTileBits);
}
inline size_t NearPlaceInTile(std::int32_t column, std::int32_t row) {
  constexpr std::int32_t kMask = (1 << NearGrid::kTileBits) - 1;
  return static_cast<size_t>((column & kMask) << NearGrid::kTileBits | (row & kMask));
}
// Where the search for a tile begins among the slots: neighbours lie side by side.
inline size_t NearFirstSlot(const NearGrid& grid, std::int32_t column, std::int32_t row) {
  const auto tile_column = static_cast<std::uint32_t>(column >> NearGrid::kTileBits);
  const auto tile_row = static_cast<std::uint32_t>(row >> NearGrid::kTileBits);
  return (size_t{tile_column} * grid.tile_stride + tile_row) & grid.slot_mask;
}
inline size_t NearPageOf(std::uint64_t slot) { return (slot & ((1u << kNearPageBits) - 1)) - 1; }

class NearTable {
 public:
  NearTable(const PlanSnapshot& plan, ChordDistances distances);

  const NearGrid& Grid() const { return grid_; }
  // A slot holds a tile's key in its upper 40 bits and its page, counted from 1, in the lower 24; the squares
  // of page i begin at Squares() + i * kTileSquares.
  const std::uint64_t* Slots() const { return slots_.get(); }
  const std::uint64_t* Squares() const { return squares_.get(); }

  // The square of a point, worked out where it was not known; a reach of 0 outside the grid and when the
  // table is full.
  NearSquare Square(PlanePoint p) const;
  // How many tiles are worked out.
  size_t Tiles() const { return pages_used_.load(std::memory_order_relaxed); }
  // The candidates of a square with a reach. `single` holds the run where there is only one.
  std::span<const SegmentRun> Runs(NearSquare square, SegmentRun* single) const {
    *single = {static_cast<std::uint32_t>(NearRunFirst(square)),
               static_cast<std::uint32_t>(NearRunCount(square))};
    return single->count > 0 ? std::span<const SegmentRun>(single, 1) : ListAt(square);
  }
  // The same for comparing chords: empty where they do not tell how near the feet are.
  std::span<const SegmentRun> ChordRuns(NearSquare square, SegmentRun* single) const {
    const bool tell =
        NearReach(square) > 0 && (NearRunCount(square) > 0 || ListHead(square).first == kChordsTell);
    return tell ? Runs(square, single) : std::span<const SegmentRun>();
  }

 private:
  // Before each list: whether chords tell how near its candidates are, and how many runs follow.
  static constexpr std::uint32_t kChordsTell = 1;
  const SegmentRun& ListHead(NearSquare square) const {
    return runs_[static_cast<std::uint32_t>(square) >> 4];
  }
  std::span<const SegmentRun> ListAt(NearSquare square) const {
    return {&ListHead(square) + 1, ListHead(square).count};
  }

  struct Free {
    void operator()(void* memory) const { std::free(memory); }
  };
  template <class T>
  using Zeros = std::unique_ptr<T[], Free>;  // from calloc: memory that is never touched costs nothing

  NearSquare Fill(std::int32_t column, std::int32_t row, size_t slot) const;
  NearSquare Encode(const TileCandidates::Candidates& candidates) const;

  const PlanSnapshot* plan_;
  ChordDistances distances_;
  NearGrid grid_;
  double side_ = 0;
  size_t page_limit_ = 0;
  size_t run_limit_ = 0;
  Zeros<std::uint64_t> slots_;
  Zeros<std::uint64_t> squares_;
  Zeros<SegmentRun> runs_;  // the lists, each after its head
  mutable std::atomic<size_t> pages_used_ = 0;
  mutable std::atomic<size_t> runs_used_ = 1;  // a list is never at 0
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_NEAR_TABLE_H_
