#include "velmora/locator/candidate_grid.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace velmora {
namespace {

constexpr std::int32_t kTileSide = 1 << GridLayout::kTileBits;
constexpr double kMostCells = 1 << 22;      // along one side of the grid
constexpr size_t kMostSegments = 1u << 28;  // limit of a cell's 28 bits
constexpr int kMostProbes = 32;             // for a tile among the slots
constexpr double kCellRadius = 0.70711;     // of its side, with room for rounding

// The median length of a sample of the chords.
double MedianLength(const PlanSnapshot& plan) {
  constexpr size_t kSample = 63;
  const size_t step = plan.Segments() / kSample + 1;
  std::vector<double> lengths;
  for (size_t i = 0; i < plan.Segments(); i += step)
    if (!plan.IsBetweenRoads(i)) lengths.push_back(Distance(plan.At(i), plan.At(i + 1)));
  if (lengths.empty()) return 0;
  const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
  std::nth_element(lengths.begin(), middle, lengths.end());
  return *middle;
}

}  // namespace

CandidateGrid::CandidateGrid(const PlanSnapshot& plan, const ChordRoutines& routines)
    : plan_(&plan), routines_(routines) {
  // Smaller cells have fewer candidates, but with a large plan the memory they take costs more than that.
  constexpr size_t kLargePlan = size_t{1} << 16;
  const double sides_per_segment = plan.Segments() < kLargePlan ? 2 : 1.4;
  constexpr double kMargin = 100;  // m around the plan
  if (plan.Segments() == 0 || plan.Segments() >= kMostSegments || plan.HasUnbounded()) return;
  BoundingBox extent = plan.Extent();
  extent.Grow(kMargin);
  const PlanePoint size{extent.high.h - extent.low.h, extent.high.v - extent.low.v};
  side_ = std::max({MedianLength(plan) / sides_per_segment, 1.0, size.h / kMostCells, size.v / kMostCells});

  const size_t tiles = std::clamp<size_t>(plan.Segments() * 4, 64, size_t{1} << 23);
  const size_t slots = std::bit_ceil(tiles * 2);
  run_limit_ = tiles * 4;
  slots_.reset(static_cast<std::uint64_t*>(std::calloc(slots, sizeof(std::uint64_t))));
  cells_.reset(static_cast<PackedCell*>(std::malloc(tiles * GridLayout::kTileCells * sizeof(PackedCell))));
  runs_.reset(static_cast<SegmentRun*>(std::malloc(run_limit_ * sizeof(SegmentRun))));
  if (slots_ == nullptr || cells_ == nullptr || runs_ == nullptr) return;  // only the trees answer
  page_limit_ = tiles;
  layout_ = {extent.low,
             1 / side_,
             std::floor(size.h / side_),
             std::floor(size.v / side_),
             static_cast<std::uint32_t>(size.v / side_ / kTileSide + 1) | 1,
             slots - 1};
}

PackedCell CandidateGrid::CellAt(PlanePoint p, size_t close) const {
  const double column = (p.h - layout_.low.h) * layout_.per_metre;
  const double row = (p.v - layout_.low.v) * layout_.per_metre;
  if (!(column >= 0 && column < layout_.columns && row >= 0 && row < layout_.rows)) return 0;
  const auto c = static_cast<std::int32_t>(column);
  const auto r = static_cast<std::int32_t>(row);
  const std::uint64_t key = TileKey(c, r);
  size_t slot = FirstSlot(layout_, c, r);
  for (int probes = 0; probes < kMostProbes; ++probes, slot = (slot + 1) & layout_.slot_mask) {
    const std::uint64_t held = LoadSlot(slots_[slot]);
    if (held == 0) return BeginTile(c, r, slot, close);
    if (held >> kPageBits != key) continue;
    PackedCell* const cells = &cells_[PageOf(held) * GridLayout::kTileCells];
    const PackedCell cell = LoadCell(cells[CellInTile(c, r)]);
    return cell == kUnknownCell ? Fill(c, r, cells, close) : cell;
  }
  return 0;
}

// Computes the cell and publishes its tile in the first free slot from `slot` on.
PackedCell CandidateGrid::BeginTile(std::int32_t column, std::int32_t row, size_t slot, size_t close) const {
  if (pages_used_.load(std::memory_order_relaxed) >= page_limit_) return 0;
  const size_t page = pages_used_.fetch_add(1, std::memory_order_relaxed);
  if (page >= page_limit_) return 0;
  PackedCell* const cells = &cells_[page * GridLayout::kTileCells];
  std::fill_n(cells, GridLayout::kTileCells, kUnknownCell);
  const PackedCell cell = Fill(column, row, cells, close);

  const std::uint64_t key = TileKey(column, row);
  const std::uint64_t mine = key << kPageBits | (page + 1);
  for (int probes = 0; probes < kMostProbes; ++probes, slot = (slot + 1) & layout_.slot_mask) {
    std::uint64_t held = 0;
    if (std::atomic_ref(slots_[slot])
            .compare_exchange_strong(held, mine, std::memory_order_release, std::memory_order_acquire))
      break;
    if (held >> kPageBits == key) break;  // another thread published the same tile
  }
  return cell;
}

PackedCell CandidateGrid::Fill(std::int32_t column, std::int32_t row, PackedCell* cells, size_t close) const {
  const PlanePoint middle{layout_.low.h + (column + 0.5) * side_, layout_.low.v + (row + 0.5) * side_};
  const PackedCell cell = Encode(CellCandidates(*plan_, routines_, middle, side_ * kCellRadius, close));
  std::atomic_ref(cells[CellInTile(column, row)]).store(cell, std::memory_order_release);
  return cell;
}

PackedCell CandidateGrid::Encode(const CellCandidates& candidates) const {
  if (candidates.reach <= 0) return 0;
  const double within = std::min(candidates.reach, kFoundBelow);  // beyond it nothing is found
  const auto reach = std::uint64_t{std::bit_cast<std::uint32_t>(static_cast<float>(within))} << 32;
  const SegmentRun& only = candidates.run[0];
  if (candidates.runs == 1 && only.count <= kLongestRun && candidates.chords_bound_feet)
    return reach | std::uint64_t{only.first} << 4 | only.count;
  const size_t needed = candidates.runs + 1;
  const size_t place = runs_used_.fetch_add(needed, std::memory_order_relaxed);
  if (place + needed > run_limit_ || place >= kMostSegments) return 0;
  runs_[place] = {candidates.chords_bound_feet ? kChordsBoundFeet : 0,
                  static_cast<std::uint32_t>(candidates.runs)};
  std::copy_n(candidates.run.begin(), candidates.runs, &runs_[place + 1]);
  return reach | std::uint64_t{place} << 4;
}

}  // namespace velmora
