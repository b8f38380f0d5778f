#include "velmora/alignment/near_table.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace velmora {
namespace {

constexpr std::uint32_t kTileSide = 1u << NearGrid::kTileBits;
constexpr double kMostSquares = 1 << 22;    // along one side of the grid
constexpr size_t kMostSegments = 1u << 28;  // what a square can name
constexpr unsigned kPageBits = 24;
constexpr std::uint64_t kPageMask = (1u << kPageBits) - 1;
constexpr std::uint64_t kCountMask = 15;
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

NearTable::NearTable(const PlanSnapshot& plan) : plan_(&plan) {
  constexpr double kSidesPerSegment = 2;
  constexpr double kMargin = 100;  // m around the plan
  if (plan.Segments() == 0 || plan.Segments() >= kMostSegments || plan.HasWild()) return;
  Box extent = plan.Extent();
  extent.Grow(kMargin);
  const PlanePoint size{extent.high.h - extent.low.h, extent.high.v - extent.low.v};
  side_ = std::max({UsualLength(plan) / kSidesPerSegment, 1.0, size.h / kMostSquares, size.v / kMostSquares});

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
           64u - static_cast<unsigned>(std::bit_width(slots) - 1),
           slots - 1};
}

double NearTable::Reach(NearSquare square) {
  return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(square >> 32)));
}

std::span<const SegmentRun> NearTable::Runs(NearSquare square, SegmentRun* single) const {
  const auto place = static_cast<std::uint32_t>(square & 0xffffffff) >> 4;
  const auto count = static_cast<std::uint32_t>(square & kCountMask);
  if (count == 0) return {&runs_[place + 1], runs_[place].count};
  *single = {place, count};
  return {single, 1};
}

NearSquare NearTable::Square(PlanePoint p) const {
  const double column = (p.h - grid_.low.h) * grid_.per_metre;
  const double row = (p.v - grid_.low.v) * grid_.per_metre;
  if (!(column >= 0 && column < grid_.columns && row >= 0 && row < grid_.rows)) return 0;
  const auto c = static_cast<std::uint32_t>(column);
  const auto r = static_cast<std::uint32_t>(row);
  const std::uint64_t key = NearTileKey(c, r);
  for (size_t slot = NearSlot(grid_, key);; slot = (slot + 1) & grid_.slot_mask) {
    const std::uint64_t held = Load(slots_[slot]);
    if (held == 0) return Fill(c, r, slot);
    if (held >> kPageBits == key)
      return squares_[((held & kPageMask) - 1) * NearGrid::kTileSquares + NearPlaceInTile(c, r)];
  }
}

// Works out the tile of the square and offers it to all from `slot` on, the first one that was free.
NearSquare NearTable::Fill(std::uint32_t column, std::uint32_t row, size_t slot) const {
  if (pages_used_.load(std::memory_order_relaxed) >= page_limit_) return 0;
  const size_t page = pages_used_.fetch_add(1, std::memory_order_relaxed);
  if (page >= page_limit_) return 0;
  const std::uint32_t first_column = column & ~(kTileSide - 1);
  const std::uint32_t first_row = row & ~(kTileSide - 1);
  const auto middle_of = [&](double c, double r, double squares) {
    return PlanePoint{grid_.low.h + (c + squares / 2) * side_, grid_.low.v + (r + squares / 2) * side_};
  };
  const TileCandidates tile(*plan_, middle_of(first_column, first_row, kTileSide),
                            kTileSide * side_ * kSquareRadius);
  std::uint64_t* const squares = &squares_[page * NearGrid::kTileSquares];
  for (std::uint32_t c = first_column; c < first_column + kTileSide; ++c)
    for (std::uint32_t r = first_row; r < first_row + kTileSide; ++r)
      squares[NearPlaceInTile(c, r)] = Encode(tile.ForCircle(middle_of(c, r, 1), side_ * kSquareRadius));

  const std::uint64_t key = NearTileKey(column, row);
  const std::uint64_t mine = key << kPageBits | (page + 1);
  for (;; slot = (slot + 1) & grid_.slot_mask) {
    std::uint64_t held = 0;
    if (__atomic_compare_exchange_n(&slots_[slot], &held, mine, false, __ATOMIC_RELEASE, __ATOMIC_ACQUIRE))
      break;
    if (held >> kPageBits == key) break;  // another thread was first with the same
  }
  return squares[NearPlaceInTile(column, row)];
}

NearSquare NearTable::Encode(const TileCandidates::Candidates& candidates) const {
  if (candidates.reach <= 0) return 0;
  const auto reach = std::uint64_t{std::bit_cast<std::uint32_t>(static_cast<float>(candidates.reach))} << 32;
  const std::vector<SegmentRun>& runs = candidates.runs;
  if (runs.size() == 1 && runs[0].count <= kCountMask && candidates.chords_tell)
    return reach | std::uint64_t{runs[0].first} << 4 | runs[0].count;
  const size_t place = runs_used_.fetch_add(runs.size() + 1, std::memory_order_relaxed);
  if (place + runs.size() + 1 > run_limit_ || place >= kMostSegments) return 0;
  runs_[place] = {0, static_cast<std::uint32_t>(runs.size())};
  std::copy(runs.begin(), runs.end(), &runs_[place + 1]);
  return reach | std::uint64_t{place} << 4;
}

}  // namespace velmora
