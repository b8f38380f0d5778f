#include "velmora/locator/near_table.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace velmora {
namespace {

constexpr std::int32_t kTileSide = 1 << NearGrid::kTileBits;
constexpr double kMostSquares = 1 << 22;    // along one side of the grid
constexpr size_t kMostSegments = 1u << 28;  // what a square can name
constexpr int kMostProbes = 32;             // for a tile among the slots
constexpr std::uint32_t kLongestRun = 15;
constexpr double kSquareRadius = 0.70711;  // of its side, with room for rounding

// The median length of the chords, from some of them.
double UsualLength(const PlanSnapshot& plan) {
  constexpr size_t kSample = 511;
  const size_t step = plan.Segments() / kSample + 1;
  std::vector<double> lengths;
  for (size_t i = 0; i < plan.Segments(); i += step) lengths.push_back(Distance(plan.At(i), plan.At(i + 1)));
  const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
  std::nth_element(lengths.begin(), middle, lengths.end());
  return *middle;
}

std::uint64_t Load(const std::uint64_t& from) { return __atomic_load_n(&from, __ATOMIC_ACQUIRE); }

}  // namespace

NearTable::NearTable(const PlanSnapshot& plan, ChordDistances distances)
    : plan_(&plan), distances_(distances) {
  // Smaller squares have fewer candidates; beside a large plan the memory they take costs more than that.
  constexpr size_t kLargePlan = size_t{1} << 16;
  const double sides_per_segment = plan.Segments() < kLargePlan ? 2 : 1.4;
  constexpr double kMargin = 100;  // m around the plan
  if (plan.Segments() == 0 || plan.Segments() >= kMostSegments || plan.HasUnbounded()) return;
  Box extent = plan.Extent();
  extent.Grow(kMargin);
  const PlanePoint size{extent.high.h - extent.low.h, extent.high.v - extent.low.v};
  side_ =
      std::max({UsualLength(plan) / sides_per_segment, 1.0, size.h / kMostSquares, size.v / kMostSquares});

  const size_t tiles = std::clamp<size_t>(plan.Segments() * 4, 64, size_t{1} << 23);
  const size_t slots = std::bit_ceil(tiles * 2);
  const auto zeros = []<class T>(size_t count, const T&) {
    return Zeros<T>(static_cast<T*>(std::calloc(count, sizeof(T))));
  };
  slots_ = zeros(slots, std::uint64_t{});
  squares_ = zeros(tiles * NearGrid::kTileSquares, std::uint64_t{});
  run_limit_ = tiles * 4;
  runs_ = zeros(run_limit_, SegmentRun{});
  if (slots_ == nullptr || squares_ == nullptr || runs_ == nullptr) return;  // the trees answer alone
  page_limit_ = tiles;
  grid_ = {extent.low,
           1 / side_,
           std::floor(size.h / side_),
           std::floor(size.v / side_),
           static_cast<std::uint32_t>(size.v / side_ / kTileSide + 1) | 1,
           slots - 1};
}

NearSquare NearTable::Square(PlanePoint p) const {
  const double column = (p.h - grid_.low.h) * grid_.per_metre;
  const double row = (p.v - grid_.low.v) * grid_.per_metre;
  if (!(column >= 0 && column < grid_.columns && row >= 0 && row < grid_.rows)) return 0;
  const auto c = static_cast<std::int32_t>(column);
  const auto r = static_cast<std::int32_t>(row);
  const std::uint64_t key = NearTileKey(c, r);
  size_t slot = NearFirstSlot(grid_, c, r);
  for (int probes = 0; probes < kMostProbes; ++probes, slot = (slot + 1) & grid_.slot_mask) {
    const std::uint64_t held = Load(slots_[slot]);
    if (held == 0) return Fill(c, r, slot);
    if (held >> kNearPageBits == key)
      return squares_[NearPageOf(held) * NearGrid::kTileSquares + NearPlaceInTile(c, r)];
  }
  return 0;
}

// Works out the tile of the square and offers it to all from `slot` on, the first one that was free.
NearSquare NearTable::Fill(std::int32_t column, std::int32_t row, size_t slot) const {
  if (pages_used_.load(std::memory_order_relaxed) >= page_limit_) return 0;
  const size_t page = pages_used_.fetch_add(1, std::memory_order_relaxed);
  if (page >= page_limit_) return 0;
  const std::int32_t first_column = column & ~(kTileSide - 1);
  const std::int32_t first_row = row & ~(kTileSide - 1);
  const auto middle_of = [&](double c, double r, double squares) {
    return PlanePoint{grid_.low.h + (c + squares / 2) * side_, grid_.low.v + (r + squares / 2) * side_};
  };
  const TileCandidates tile(*plan_, distances_, middle_of(first_column, first_row, kTileSide),
                            kTileSide * side_ * kSquareRadius);
  std::uint64_t* const squares = &squares_[page * NearGrid::kTileSquares];
  TileCandidates::Candidates candidates;
  for (std::int32_t c = first_column; c < first_column + kTileSide; ++c)
    for (std::int32_t r = first_row; r < first_row + kTileSide; ++r) {
      tile.ForCircle(middle_of(c, r, 1), side_ * kSquareRadius, &candidates);
      squares[NearPlaceInTile(c, r)] = Encode(candidates);
    }

  const std::uint64_t key = NearTileKey(column, row);
  const std::uint64_t mine = key << kNearPageBits | (page + 1);
  for (int probes = 0; probes < kMostProbes; ++probes, slot = (slot + 1) & grid_.slot_mask) {
    std::uint64_t held = 0;
    if (__atomic_compare_exchange_n(&slots_[slot], &held, mine, false, __ATOMIC_RELEASE, __ATOMIC_ACQUIRE))
      break;
    if (held >> kNearPageBits == key) break;  // another thread was first with the same
  }
  return squares[NearPlaceInTile(column, row)];
}

NearSquare NearTable::Encode(const TileCandidates::Candidates& candidates) const {
  if (candidates.reach <= 0) return 0;
  const auto reach = std::uint64_t{std::bit_cast<std::uint32_t>(static_cast<float>(candidates.reach))} << 32;
  const SegmentRun& only = candidates.run[0];
  if (candidates.runs == 1 && only.count <= kLongestRun && candidates.chords_tell)
    return reach | std::uint64_t{only.first} << 4 | only.count;
  const size_t needed = candidates.runs + 1;
  const size_t place = runs_used_.fetch_add(needed, std::memory_order_relaxed);
  if (place + needed > run_limit_ || place >= kMostSegments) return 0;
  runs_[place] = {candidates.chords_tell ? kChordsTell : 0, static_cast<std::uint32_t>(candidates.runs)};
  std::copy_n(candidates.run.begin(), candidates.runs, &runs_[place + 1]);
  return reach | std::uint64_t{place} << 4;
}

}  // namespace velmora
