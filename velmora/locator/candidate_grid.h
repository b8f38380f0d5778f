// The segments that can be nearest, by square cells of the ground near a plan. Cells are
// computed when points fall into them; four by four share a tile of memory. Any number of threads look up and
// fill at once, without locks.
//
// A cell's candidates come with a reach: every other segment is farther than that from every point of the
// cell. So a nearest candidate within the reach is the nearest segment.
#ifndef VELMORA_LOCATOR_CANDIDATE_GRID_H_
#define VELMORA_LOCATOR_CANDIDATE_GRID_H_

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <vector>

#include "velmora/alignment/geometry.h"
#include "velmora/locator/cell_candidates.h"
#include "velmora/locator/plan_snapshot.h"

namespace velmora {

// A cell in 64 bits: the reach as a float, and either a run of up to 15 consecutive segments or the position
// of a list of runs.
//   bits 32 to 63  reach, m; 0 where only the trees can answer
//   bits 4 to 31   first segment of the run; with a count of 0 the position of the list
//   bits 0 to 3    segments in the run
using PackedCell = std::uint64_t;
inline constexpr PackedCell kUnknownCell = 1;  // not computed; its reach is 0 too
inline size_t RunCount(PackedCell cell) { return cell & 15; }
inline double Reach(PackedCell cell) {
  return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(cell >> 32)));
}
// 0 for a list.
inline size_t RunFirst(PackedCell cell) {
  return RunCount(cell) == 0 ? 0 : static_cast<std::uint32_t>(cell) >> 4;
}

// The cell of a point: columns along h and rows along v count from `low`.
struct GridLayout {
  PlanePoint low{};
  double per_metre = 0;  // 1 / side of a cell
  double columns = 0;    // along h
  double rows = 0;       // along v
  std::uint32_t tile_stride = 1;
  std::size_t slot_mask = 0;

  static constexpr int kTileBits = 2;
  static constexpr size_t kTileCells = size_t{1} << (2 * kTileBits);
};

// The key of a cell's tile. That of the cell at (-1, -1) belongs to no tile.
inline constexpr int kPageBits = 24;
inline std::uint64_t TileKey(std::int32_t column, std::int32_t row) {
  return static_cast<std::uint64_t>(column >> GridLayout::kTileBits) << 20 ^
         static_cast<std::uint64_t>(row >> GridLayout::kTileBits);
}
inline size_t CellInTile(std::int32_t column, std::int32_t row) {
  constexpr std::int32_t kMask = (1 << GridLayout::kTileBits) - 1;
  return static_cast<size_t>((column & kMask) << GridLayout::kTileBits | (row & kMask));
}
// The slot at which probing for a tile begins. Tiles that follow each other along v have adjacent slots.
inline size_t FirstSlot(const GridLayout& grid, std::int32_t column, std::int32_t row) {
  const auto tile_column = static_cast<std::uint32_t>(column >> GridLayout::kTileBits);
  const auto tile_row = static_cast<std::uint32_t>(row >> GridLayout::kTileBits);
  return (size_t{tile_column} * grid.tile_stride + tile_row) & grid.slot_mask;
}
inline size_t PageOf(std::uint64_t slot) { return (slot & ((1u << kPageBits) - 1)) - 1; }

inline std::uint64_t LoadSlot(std::uint64_t& slot) {
  return std::atomic_ref(slot).load(std::memory_order_acquire);
}

inline PackedCell LoadCell(PackedCell& cell) { return std::atomic_ref(cell).load(std::memory_order_acquire); }

class CandidateGrid {
 public:
  CandidateGrid(const PlanSnapshot& plan, const ChordRoutines& routines);

  const GridLayout& Layout() const { return layout_; }
  // A slot holds a tile's key in its upper 40 bits and its page, counted from 1, in the lower 24; the cells
  // of page i begin at Cells() + i * kTileCells.
  std::uint64_t* Slots() const { return slots_.get(); }
  PackedCell* Cells() const { return cells_.get(); }

  // The cell of a point, computed where it was not known; a reach of 0 outside the grid and when the memory
  // for tiles is used up.
  // `close`: any segment, better one that is not far.
  PackedCell CellAt(PlanePoint p, size_t close = 0) const;
  // The candidates of a cell with a reach. `single` holds the run where there is only one.
  std::span<const SegmentRun> Runs(PackedCell cell, SegmentRun* single) const {
    *single = {static_cast<std::uint32_t>(RunFirst(cell)), static_cast<std::uint32_t>(RunCount(cell))};
    return single->count > 0 ? std::span<const SegmentRun>(single, 1) : ListAt(cell);
  }
  // The same for comparing chords: empty where they do not bound the distances of the feet.
  std::span<const SegmentRun> ChordRuns(PackedCell cell, SegmentRun* single) const {
    const bool bounded = Reach(cell) > 0 && (RunCount(cell) > 0 || ListHead(cell).first == kChordsBoundFeet);
    return bounded ? Runs(cell, single) : std::span<const SegmentRun>();
  }

 private:
  // The head of a list: whether chords bound its candidates' feet, and how many runs follow.
  static constexpr std::uint32_t kChordsBoundFeet = 1;
  const SegmentRun& ListHead(PackedCell cell) const { return runs_[static_cast<std::uint32_t>(cell) >> 4]; }
  std::span<const SegmentRun> ListAt(PackedCell cell) const {
    return {&ListHead(cell) + 1, ListHead(cell).count};
  }

  struct Free {
    void operator()(void* memory) const { std::free(memory); }
  };
  // From malloc or, of zeros, calloc: memory costs nothing until it is written.
  template <class T>
  using Array = std::unique_ptr<T[], Free>;

  PackedCell BeginTile(std::int32_t column, std::int32_t row, size_t slot, size_t close) const;
  // Computes a cell of a tile. Threads that do so at once store equal cells.
  PackedCell Fill(std::int32_t column, std::int32_t row, PackedCell* cells, size_t close) const;
  PackedCell Encode(const CellCandidates& candidates) const;

  const PlanSnapshot* plan_;
  ChordRoutines routines_;
  GridLayout layout_;
  double side_ = 0;
  size_t page_limit_ = 0;
  size_t run_limit_ = 0;
  Array<std::uint64_t> slots_;
  Array<PackedCell> cells_;
  Array<SegmentRun> runs_;  // the lists, each after its head
  mutable std::atomic<size_t> pages_used_ = 0;
  mutable std::atomic<size_t> runs_used_ = 1;  // a list is never at 0
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_CANDIDATE_GRID_H_
