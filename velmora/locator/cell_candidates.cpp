#include "velmora/locator/cell_candidates.h"

#include <algorithm>
#include <limits>

namespace velmora {
namespace {

constexpr std::uint32_t kMostInCell = 64;
constexpr std::uint32_t kWorthBridging = 8;  // segments: a shorter gap costs less than a second run
constexpr double kRoom = 1e-4;               // m, for rounding

}  // namespace

void NearSegments::DropFarOnes() {
  size_t kept = 0;
  for (size_t k = 0; k < count; ++k)
    if (near[k].away <= Limit()) near[kept++] = near[k];
  count = kept;
}

// By insertion: few leaves are visited, mostly in their order or against it.
void NearSegments::Sort() {
  DropFarOnes();
  for (size_t k = 1; k < count; ++k) {
    const One one = near[k];
    size_t at = k;
    for (; at > 0 && near[at - 1].segment > one.segment; --at) near[at] = near[at - 1];
    near[at] = one;
  }
}

CellCandidates::CellCandidates(const PlanSnapshot& plan, const ChordRoutines& routines, PlanePoint middle,
                               double radius, size_t close) {
  // The segment nearest to any point of the circle is farther from its middle than the middle's nearest by at
  // most the diameter.
  NearSegments near(2 * radius + kRoom);
  const double away = DistanceFromChord(plan.At(close), plan.At(close + 1), middle) + plan.ChordSlack(close);
  near.nearest = std::min(near.nearest, away);  // which may be not a number
  routines.near(plan, middle, &near);
  if (near.too_many || !(near.nearest < NearSegments::kFarthest)) return;
  const double limit = near.Limit();
  std::uint32_t low = std::numeric_limits<std::uint32_t>::max();
  std::uint32_t high = 0;
  for (size_t k = 0; k < near.count; ++k) {
    if (near.near[k].away > limit) continue;
    low = std::min(low, near.near[k].segment);
    high = std::max(high, near.near[k].segment);
  }
  if (high - low < kLongestRun && plan.AxisQuirks().empty()) {
    runs = 1;
    run[0] = {low, high - low + 1};
  } else if (!ListRuns(plan, middle, &near)) {
    return;
  }
  // Whatever answers for a point of the circle is within this of it.
  reach = (limit - radius) * (1 - 1e-5) - kRoom / 2;
}

bool CellCandidates::ListRuns(const PlanSnapshot& plan, PlanePoint middle, NearSegments* near) {
  constexpr size_t kMostQuirks = 64;
  std::array<std::uint32_t, kMostQuirks> beside;  // NOLINT: filled as far as it is read
  size_t besides = 0;
  bool room = true;
  const double limit = near->Limit() * near->Limit();
  plan.AxisTree().Search(
      middle, [&](const BoundTree::Node&, double squared) { return room && squared <= limit; },
      [&](size_t leaf) {
        const size_t begin = leaf * BoundTree::kFan;
        const size_t end = std::min(begin + BoundTree::kFan, plan.AxisQuirks().size());
        for (size_t i = begin; i < end; ++i) {
          if (plan.AxisQuirks()[i].bound.box.SquaredDistance(middle) > limit) continue;
          room = room && besides < kMostQuirks;
          if (room) beside[besides++] = plan.AxisQuirks()[i].segment;
        }
      });
  if (!room) return false;
  chords_bound_feet = besides == 0;
  std::sort(beside.begin(), beside.begin() + static_cast<std::ptrdiff_t>(besides));
  near->Sort();

  size_t next = 0;  // among `beside`
  for (size_t k = 0; k < near->count; ++k) {
    for (; next < besides && beside[next] < near->near[k].segment; ++next) room = Add(beside[next]) && room;
    room = Add(near->near[k].segment) && room;
  }
  for (; next < besides; ++next) room = Add(beside[next]) && room;
  std::uint32_t total = 0;
  for (size_t r = 0; r < runs; ++r) total += run[r].count;
  return room && total <= kMostInCell;
}

bool CellCandidates::Add(std::uint32_t segment) {
  if (runs > 0 && segment <= run[runs - 1].first + run[runs - 1].count + kWorthBridging) {
    run[runs - 1].count = segment + 1 - run[runs - 1].first;
    return true;
  }
  if (runs == kMostRuns) return false;
  run[runs++] = {segment, 1};
  return true;
}

}  // namespace velmora
