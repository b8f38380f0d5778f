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

// Adds a segment above all others, or one of the last run. False when there is no room for another run.
bool TileCandidates::Candidates::Add(std::uint32_t segment, std::uint32_t* total) {
  if (runs == 0 || segment > run[runs - 1].first + run[runs - 1].count + kWorthBridging) {
    if (runs == kMostRuns) return false;
    run[runs++] = {segment, 0};
  }
  SegmentRun& last = run[runs - 1];
  const std::uint32_t count = std::max(last.count, segment + 1 - last.first);
  *total += count - last.count;
  last.count = count;
  return true;
}

void NearSegments::DropFarOnes() {
  const auto end = near.begin() + static_cast<std::ptrdiff_t>(count);
  count = static_cast<size_t>(
      std::remove_if(near.begin(), end, [this](const One& one) { return one.away > limit; }) - near.begin());
}

// Few leaves are visited, mostly in their order or against it.
void NearSegments::End() {
  DropFarOnes();
  for (size_t k = 1; k < count; ++k) {
    const One one = near[k];
    size_t at = k;
    for (; at > 0 && near[at - 1].segment > one.segment; --at) near[at] = near[at - 1];
    near[at] = one;
  }
  too_many = too_many || !(nearest < kFarthest);
}

TileCandidates::TileCandidates(const PlanSnapshot& plan, const ChordRoutines& routines, PlanePoint middle,
                               double radius)
    : plan_(&plan), distances_(routines.distances), middle_(middle), radius_(radius) {
  routines.near(plan, middle, RoomFor(radius), &near_);
  CollectAxisQuirks();
}

void TileCandidates::CollectAxisQuirks() {
  const double limit = Squared(near_.limit);
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

void TileCandidates::ForCircle(PlanePoint middle, double radius, Candidates* found) const {
  NearSegments near;  // NOLINT: filled as far as it is read
  near.Begin(RoomFor(radius));
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
  near.limit = near.nearest + near.room;
  near.End();
  Choose(near, middle, radius, found);
}

void TileCandidates::Choose(const NearSegments& near, PlanePoint middle, double radius,
                            Candidates* found) const {
  found->reach = 0;
  found->runs = 0;
  if (near.too_many) return;
  std::array<std::uint32_t, kMostQuirks> beside;  // NOLINT: filled as far as it is read
  size_t besides = 0;
  for (size_t k = 0; k < quirks_; ++k)
    if (quirk_[k]->bound.box.SquaredDistance(middle) <= Squared(near.limit))
      beside[besides++] = quirk_[k]->segment;
  std::sort(beside.begin(), beside.begin() + static_cast<std::ptrdiff_t>(besides));
  found->chords_bound_feet = besides == 0;

  bool room = true;
  std::uint32_t total = 0;
  size_t next = 0;  // among `beside`
  for (size_t k = 0; k < near.count && room; ++k) {
    for (; next < besides && beside[next] < near.near[k].segment && room; ++next)
      room = found->Add(beside[next], &total);
    room = room && found->Add(near.near[k].segment, &total);
  }
  for (; next < besides && room; ++next) room = found->Add(beside[next], &total);
  // Whatever answers for a point of the circle is within this of it.
  const double reach = near.limit - radius;
  if (room && total <= kMostInCell) found->reach = reach * (1 - 1e-5) - kTileRoom / 2;
}

}  // namespace velmora
