#include "velmora/locator/tile_candidates.h"

#include <algorithm>
#include <limits>

namespace velmora {
namespace {

constexpr std::uint32_t kMostInCell = 64;
// Segments: a shorter gap between runs costs less than a second run.
constexpr std::uint32_t kWorthBridging = 8;
constexpr double kTileRoom = 1e-4;  // m, for rounding

double Squared(double length) { return length * length; }
// The segment nearest to any point of a circle is farther from its middle than the middle's nearest by at
// most the diameter.
double RoomFor(double radius) { return 2 * radius + kTileRoom; }

}  // namespace

bool TileCandidates::Candidates::Add(std::uint32_t segment) {
  if (runs > 0 && segment <= run[runs - 1].first + run[runs - 1].count + kWorthBridging) {
    run[runs - 1].count = segment + 1 - run[runs - 1].first;
    return true;
  }
  if (runs == kMostRuns) return false;
  run[runs++] = {segment, 1};
  return true;
}

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

TileCandidates::TileCandidates(const PlanSnapshot& plan, const ChordRoutines& routines, PlanePoint middle,
                               double radius)
    : plan_(&plan),
      distances_(routines.distances),
      middle_(middle),
      radius_(radius),
      near_(RoomFor(radius)) {
  const double farthest = near_.nearest;
  routines.near(plan, middle, &near_);
  near_.too_many = near_.too_many || !(near_.nearest < farthest);
  if (!plan.AxisQuirks().empty()) CollectAxisQuirks();
}

void TileCandidates::CollectAxisQuirks() {
  const double limit = Squared(near_.Limit());
  plan_->AxisTree().Search(
      middle_, [&](const BoundTree::Node&, double squared) { return !near_.too_many && squared <= limit; },
      [&](size_t leaf) {
        const size_t begin = leaf * BoundTree::kFan;
        const size_t end = std::min(begin + BoundTree::kFan, plan_->AxisQuirks().size());
        for (size_t i = begin; i < end; ++i) {
          const PlanSnapshot::AxisQuirk& quirk = plan_->AxisQuirks()[i];
          if (quirk.bound.box.SquaredDistance(middle_) > limit) continue;
          near_.too_many = near_.too_many || quirks_ == kMostQuirks;
          if (!near_.too_many) quirk_[quirks_++] = &quirk;
        }
      });
}

void TileCandidates::ForCircle(PlanePoint middle, double radius, Candidates* found) {
  if (!sorted_) near_.Sort();
  sorted_ = true;
  NearSegments near(RoomFor(radius));
  near.too_many = near_.too_many;
  std::array<double, 2 * kChordsAtOnce> away;  // NOLINT: written before it is read
  for (size_t k = 0; k < near_.count;) {
    const std::uint32_t first = near_.near[k].segment;
    distances_(*plan_, middle, first, kChordsAtOnce, away.data());
    for (; k < near_.count && near_.near[k].segment < first + kChordsAtOnce; ++k) {
      const std::uint32_t segment = near_.near[k].segment;
      const double slack = plan_->ChordSlack(segment);
      near.nearest = std::min(near.nearest, away[segment - first] + slack);
      near.near[near.count++] = {segment, away[segment - first] - slack};
    }
  }
  Choose(middle, radius, &near, found);
}

void TileCandidates::Choose(PlanePoint middle, double radius, NearSegments* near, Candidates* found) const {
  found->reach = 0;
  if (near->too_many) return;
  const double limit = near->Limit();
  std::uint32_t low = std::numeric_limits<std::uint32_t>::max();
  std::uint32_t high = 0;
  for (size_t k = 0; k < near->count; ++k) {
    if (near->near[k].away > limit) continue;
    low = std::min(low, near->near[k].segment);
    high = std::max(high, near->near[k].segment);
  }
  if (quirks_ == 0 && high - low < kLongestRun) {
    found->runs = 1;
    found->run[0] = {low, high - low + 1};
    found->chords_bound_feet = true;
  } else if (!AddInOrder(middle, near, found)) {
    return;
  }
  // Whatever answers for a point of the circle is within this of it.
  const double reach = limit - radius;
  found->reach = reach * (1 - 1e-5) - kTileRoom / 2;
}

bool TileCandidates::AddInOrder(PlanePoint middle, NearSegments* near, Candidates* found) const {
  std::array<std::uint32_t, kMostQuirks> beside;  // NOLINT: filled as far as it is read
  size_t besides = 0;
  for (size_t k = 0; k < quirks_; ++k)
    if (quirk_[k]->bound.box.SquaredDistance(middle) <= Squared(near->Limit()))
      beside[besides++] = quirk_[k]->segment;
  std::sort(beside.begin(), beside.begin() + static_cast<std::ptrdiff_t>(besides));
  near->Sort();

  found->runs = 0;
  found->chords_bound_feet = besides == 0;
  bool room = true;
  size_t next = 0;  // among `beside`
  for (size_t k = 0; k < near->count; ++k) {
    for (; next < besides && beside[next] < near->near[k].segment; ++next)
      room = found->Add(beside[next]) && room;
    room = found->Add(near->near[k].segment) && room;
  }
  for (; next < besides; ++next) room = found->Add(beside[next]) && room;
  std::uint32_t total = 0;
  for (size_t r = 0; r < found->runs; ++r) total += found->run[r].count;
  return room && total <= kMostInCell;
}

}  // namespace velmora
