#include "velmora/locator/tile_candidates.h"

#include <algorithm>
#include <limits>

namespace velmora {
namespace {

constexpr std::uint32_t kMostInCell = 64;
constexpr std::uint32_t kWorthBridging =
    8;                              // segments: a shorter gap between runs costs less than a second run
constexpr double kFarthest = 1e6;   // m: beyond, rounding would need more room
constexpr double kTileRoom = 1e-4;  // m, for rounding

double Squared(double length) { return length * length; }

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

TileCandidates::TileCandidates(const PlanSnapshot& plan, ChordDistances distances, PlanePoint middle,
                               double radius)
    : plan_(&plan), distances_(distances) {
  Collect(middle, radius);
}

void TileCandidates::Collect(PlanePoint middle, double radius) {
  struct Candidate {
    std::uint32_t segment;
    double away;
  };
  std::array<Candidate, kMostSegments> near;  // NOLINT: filled as far as it is read
  size_t count = 0;
  // A segment lies within its slack of its chord. One that is farther than the nearest by more than the
  // circle's diameter is nearest to no point of the circle.
  double nearest = kFarthest;
  const auto reach = [&] { return nearest + 2 * radius + kTileRoom; };
  const auto drop_far_ones = [&] {
    const auto end = std::remove_if(near.begin(), near.begin() + static_cast<std::ptrdiff_t>(count),
                                    [&](const Candidate& one) { return one.away > reach(); });
    count = static_cast<size_t>(end - near.begin());
  };
  plan_->Tree().Search(
      middle,
      [&](const BoundTree::Node&, double squared) { return !too_many_ && squared <= Squared(reach()); },
      [&](size_t leaf) {
        constexpr size_t kFan = BoundTree::kFan;
        std::array<double, kFan + kChordsAtOnce> away;  // NOLINT: written before it is read
        const size_t first = leaf * kFan;
        const size_t end = std::min(first + kFan, plan_->Segments());
        distances_(*plan_, middle, first, end - first, away.data());
        if (count + kFan > kMostSegments) drop_far_ones();
        too_many_ = count + kFan > kMostSegments;
        if (too_many_) return;
        for (size_t i = first; i < end; ++i) {
          const double slack = plan_->ChordSlack(i);
          nearest = std::min(nearest, away[i - first] + slack);
          if (away[i - first] - slack <= reach())
            near[count++] = {static_cast<std::uint32_t>(i), away[i - first] - slack};
        }
      });
  too_many_ = too_many_ || !(nearest < kFarthest);
  drop_far_ones();
  std::sort(near.begin(), near.begin() + static_cast<std::ptrdiff_t>(count),
            [](const Candidate& a, const Candidate& b) { return a.segment < b.segment; });
  Candidates all;
  std::uint32_t total = 0;
  for (size_t k = 0; k < count && !too_many_; ++k) too_many_ = !all.Add(near[k].segment, &total);
  too_many_ = too_many_ || total > kMostSegments;
  runs_ = all.runs;
  std::copy_n(all.run.begin(), runs_, run_.begin());
  CollectAxisQuirks(middle, reach());
}

void TileCandidates::CollectAxisQuirks(PlanePoint middle, double reach) {
  plan_->AxisTree().Search(
      middle, [&](const BoundTree::Node&, double squared) { return !too_many_ && squared <= Squared(reach); },
      [&](size_t leaf) {
        const size_t begin = leaf * BoundTree::kFan;
        const size_t end = std::min(begin + BoundTree::kFan, plan_->AxisQuirks().size());
        for (size_t i = begin; i < end; ++i) {
          const PlanSnapshot::AxisQuirk& quirk = plan_->AxisQuirks()[i];
          if (quirk.bound.box.SquaredDistance(middle) > Squared(reach)) continue;
          too_many_ = too_many_ || quirks_ == kMostQuirks;
          if (!too_many_) quirk_[quirks_++] = &quirk;
        }
      });
}

void TileCandidates::ForCircle(PlanePoint middle, double radius, Candidates* found) const {
  found->reach = 0;
  found->chords_bound_feet = true;
  found->runs = 0;
  if (too_many_) return;
  std::array<double, kMostSegments + kChordsAtOnce * kMostRuns> away;  // NOLINT: written before it is read
  double nearest = std::numeric_limits<double>::infinity();
  size_t begin = 0;
  for (size_t r = 0; r < runs_; begin += run_[r++].count) {
    distances_(*plan_, middle, run_[r].first, run_[r].count, &away[begin]);
    for (size_t k = 0; k < run_[r].count; ++k) {
      const double slack = plan_->ChordSlack(run_[r].first + k);
      nearest = std::min(nearest, away[begin + k] + slack);
      away[begin + k] -= slack;
    }
  }
  // The segment nearest to any point of the circle is within `reach` of it, so within `reach + radius` of the
  // middle.
  const double reach = nearest + radius + kTileRoom;
  std::array<std::uint32_t, kMostQuirks> beside;  // NOLINT: filled as far as it is read
  size_t besides = 0;
  for (size_t k = 0; k < quirks_; ++k)
    if (quirk_[k]->bound.box.SquaredDistance(middle) <= Squared(reach + radius))
      beside[besides++] = quirk_[k]->segment;
  std::sort(beside.begin(), beside.begin() + static_cast<std::ptrdiff_t>(besides));
  found->chords_bound_feet = besides == 0;

  bool room = true;
  std::uint32_t total = 0;
  size_t next = 0;  // among `beside`
  begin = 0;
  for (size_t r = 0; r < runs_ && room; begin += run_[r++].count)
    for (std::uint32_t k = 0; k < run_[r].count && room; ++k) {
      if (away[begin + k] > reach + radius) continue;
      const std::uint32_t segment = run_[r].first + k;
      for (; next < besides && beside[next] < segment && room; ++next)
        room = found->Add(beside[next], &total);
      room = room && found->Add(segment, &total);
    }
  for (; next < besides && room; ++next) room = found->Add(beside[next], &total);
  if (room && total <= kMostInCell && reach <= kFarthest) found->reach = reach * (1 - 1e-5) - kTileRoom / 2;
}

}  // namespace velmora
