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
    if (segments[k].away <= Limit()) segments[kept++] = segments[k];
  count = kept;
}

// By insertion: few leaves are visited, mostly in their order or against it.
void NearSegments::Sort() {
  DropFarOnes();
  for (size_t k = 1; k < count; ++k) {
    const One one = segments[k];
    size_t at = k;
    for (; at > 0 && segments[at - 1].segment > one.segment; --at) segments[at] = segments[at - 1];
    segments[at] = one;
  }
}

CellCandidates::CellCandidates(const PlanSnapshot& plan, const ChordRoutines& routines, PlanePoint middle,
                               double radius, size_t close) {
  // The segment nearest to any point of the circle is farther from its middle than the middle's nearest by at
  // most the diameter.
  NearSegments found(2 * radius + kRoom);
  const double away = DistanceFromChord(plan.At(close), plan.At(close + 1), middle) + plan.ChordSlack(close);
  found.nearest = std::min(found.nearest, away);  // which may be not a number
  routines.search(plan, middle, &found);
  if (found.too_many || !(found.nearest < NearSegments::kFarthest)) return;
  const double limit = found.Limit();
  std::uint32_t low = std::numeric_limits<std::uint32_t>::max();
  std::uint32_t high = 0;
  for (size_t k = 0; k < found.count; ++k) {
    if (found.segments[k].away > limit) continue;
    low = std::min(low, found.segments[k].segment);
    high = std::max(high, found.segments[k].segment);
  }
  if (high - low < kLongestRun && plan.AxisQuirks().empty()) {
    runs = 1;
    run[0] = {low, high - low + 1};
  } else if (!ListRuns(plan, middle, &found)) {
    return;
  }
  // Whatever answers for a point of the circle is within this of it.
  reach = (limit - radius) * (1 - 1e-5) - kRoom / 2;
}

bool CellCandidates::ListRuns(const PlanSnapshot& plan, PlanePoint middle, NearSegments* found) {
  constexpr size_t kMostQuirks = 64;
  std::array<std::uint32_t, kMostQuirks> beside;  // NOLINT: filled as far as it is read
  size_t besides = 0;
  bool room = true;
  const double limit = found->Limit() * found->Limit();
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
  found->Sort();

  size_t next = 0;  // among `beside`
  for (size_t k = 0; k < found->count; ++k) {
    for (; next < besides && beside[next] < found->segments[k].segment; ++next)
      room = Add(beside[next]) && room;
    room = Add(found->segments[k].segment) && room;
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
