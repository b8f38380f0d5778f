#include "velmora/alignment/near_candidates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace velmora {
namespace {

constexpr size_t kMostInTile = 256;
constexpr std::uint32_t kMostInSquare = 64;
constexpr std::uint32_t kWorthBridging = 8;  // segments: a gap between runs that is cheaper to look at
constexpr double kFarthest = 1e6;            // m: beyond, rounding would need more room
constexpr double kRoom = 1e-4;               // m, for rounding

double Squared(double length) { return length * length; }

}  // namespace

TileCandidates::TileCandidates(const PlanSnapshot& plan, PlanePoint middle, double radius) : plan_(&plan) {
  const auto each_of = [&](size_t leaf, size_t count, auto action) {
    const size_t begin = leaf * BoundTree::kFan;
    for (size_t i = begin; i < std::min(begin + BoundTree::kFan, count); ++i) action(i);
  };
  // The segment known to be wholly within the least distance: its own plus its pad.
  double nearest = kFarthest;
  const auto distance = [&](size_t i) { return DistanceFromChord(plan.At(i), plan.At(i + 1), middle); };
  plan.Tree().Search(
      middle, [&](const BoundTree::Node&, double squared) { return squared <= Squared(nearest); },
      [&](size_t leaf) {
        each_of(leaf, plan.Segments(),
                [&](size_t i) { nearest = std::min(nearest, distance(i) + plan.Pad(i)); });
      });
  const double reach = nearest + 2 * radius + kRoom;
  too_many_ = !(nearest < kFarthest);
  const auto keep = [&](const BoundTree::Node&, double squared) {
    return !too_many_ && squared <= Squared(reach);
  };
  plan.Tree().Search(middle, keep, [&](size_t leaf) {
    each_of(leaf, plan.Segments(), [&](size_t i) {
      if (distance(i) - plan.Pad(i) <= reach) segments_.push_back(static_cast<std::uint32_t>(i));
    });
    too_many_ = segments_.size() > kMostInTile;
  });
  plan.AxisTree().Search(middle, keep, [&](size_t leaf) {
    each_of(leaf, plan.AxisPlaces().size(), [&](size_t i) {
      const PlanSnapshot::AxisPlace& place = plan.AxisPlaces()[i];
      if (place.bound.box.SquaredDistance(middle) <= Squared(reach)) axis_places_.push_back(&place);
    });
    too_many_ = too_many_ || axis_places_.size() > kMostInTile;
  });
  std::sort(segments_.begin(), segments_.end());
}

TileCandidates::Candidates TileCandidates::ForCircle(PlanePoint middle, double radius) const {
  Candidates found;
  if (too_many_) return found;
  std::array<double, kMostInTile + BoundTree::kFan> distances;  // NOLINT: filled as far as it is read
  double nearest = std::numeric_limits<double>::infinity();
  for (size_t k = 0; k < segments_.size(); ++k) {
    const size_t i = segments_[k];
    distances[k] = DistanceFromChord(plan_->At(i), plan_->At(i + 1), middle);
    nearest = std::min(nearest, distances[k] + plan_->Pad(i));
  }
  // From anywhere in the circle the nearest is within `reach`, and what is farther than `reach + radius` from
  // its middle is not.
  const double reach = nearest + radius + kRoom;
  std::vector<std::uint32_t> chosen;
  for (size_t k = 0; k < segments_.size(); ++k)
    if (distances[k] - plan_->Pad(segments_[k]) <= reach + radius) chosen.push_back(segments_[k]);
  const size_t on_line = chosen.size();
  for (const PlanSnapshot::AxisPlace* place : axis_places_)
    if (place->bound.box.SquaredDistance(middle) <= Squared(reach + radius)) chosen.push_back(place->segment);
  if (chosen.size() > on_line) {
    std::sort(chosen.begin(), chosen.end());
    found.chords_tell = false;
  }

  std::uint32_t total = 0;
  for (const std::uint32_t i : chosen) {
    if (found.runs.empty() || i > found.runs.back().first + found.runs.back().count + kWorthBridging)
      found.runs.push_back({i, 0});
    SegmentRun& run = found.runs.back();
    const std::uint32_t count = std::max(run.count, i + 1 - run.first);
    total += count - run.count;
    run.count = count;
  }
  if (total <= kMostInSquare && reach <= kFarthest) found.reach = reach * (1 - 1e-5) - kRoom / 2;
  return found;
}

}  // namespace velmora
