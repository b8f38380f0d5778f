#include "velmora/locator/plan_snapshot.h"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

constexpr size_t kSpare = 16;  // elements after the last vertex

}  // namespace

double Beyond(double distance) {
  const double limit = distance * (1 + 1e-12) + 1e-5;
  return limit * limit;
}

PlanSnapshot::PlanSnapshot(std::vector<kovltype> points, double no_station, std::vector<std::uint32_t> roads)
    : points_(std::move(points)),
      roads_(std::move(roads)),
      no_station_(no_station),
      descending_(IsDescending(points_)),
      vertices_count_(!points_.empty() && !std::isnan(points_[0].x) && !std::isnan(points_[0].y)) {
  if (points_.empty()) return;
  const size_t count = points_.size();
  h_.resize(count + kSpare);
  v_.resize(count + kSpare);
  stations_.resize(count + kSpare);
  inverse_.resize(count + kSpare);
  for (size_t i = 0; i < count + kSpare; ++i) {
    const kovltype& point = points_[std::min(i, count - 1)];
    h_[i] = point.y;
    v_[i] = point.x;
    stations_[i] = point.sek;
  }
  for (size_t i = 0; i < Segments(); ++i) {
    const double dh = h_[i + 1] - h_[i];
    const double dv = v_[i + 1] - v_[i];
    const double squared = dh * dh + dv * dv;
    inverse_[i] = squared >= kShortestSquared ? 1 / squared : 0;
  }
  AddArcs();
  Bound();
}

void PlanSnapshot::AddArcs() {
  const auto is_arc = [](const kovltype& a) { return !IsStraight(a.bulge); };
  if (std::none_of(points_.begin(), points_.end() - 1, is_arc)) return;
  arc_of_.assign(points_.size(), kNoArc);
  for (size_t i = 0; i < Segments(); ++i) {
    if (!is_arc(points_[i])) continue;
    arc_of_[i] = static_cast<std::uint32_t>(arcs_.size());
    arcs_.push_back(FrameOfArc(At(i), points_[i].bulge, At(i + 1)));
  }
}

void PlanSnapshot::Bound() {
  constexpr size_t kFan = BoundTree::kFan;
  std::vector<FootBound> leaves((Segments() + kFan - 1) / kFan);
  for (size_t i = 0; i < Segments(); ++i) {
    if (IsBetweenRoads(i)) continue;
    const SegmentBounds bounds = BoundsOfSegment(points_[i], points_[i + 1], ArcOf(i));
    if (bounds.unbounded) {
      unbounded_.push_back(static_cast<std::uint32_t>(i));
      continue;
    }
    leaves[i / kFan].Include(bounds.feet);
    if (bounds.chord_slack > 0) {
      if (chord_slacks_.empty()) chord_slacks_.resize(h_.size());
      chord_slacks_[i] = bounds.chord_slack;
    }
    for (const FootBound& quirk : bounds.axis_quirks)
      axis_quirks_.push_back({quirk, static_cast<std::uint32_t>(i)});
  }
  for (const FootBound& leaf : leaves) extent_.Include(leaf.box);
  tree_.Build(leaves);
  leaves.assign((axis_quirks_.size() + kFan - 1) / kFan, {});
  for (size_t i = 0; i < axis_quirks_.size(); ++i) leaves[i / kFan].Include(axis_quirks_[i].bound);
  axis_tree_.Build(leaves);
}

void PlanSnapshot::ConsiderSegment(size_t segment, PlanePoint p, PointSearch* search) const {
  const ArcFrame* arc = ArcOf(segment);
  search->feet.Consider(
      segment, points_[segment],
      arc != nullptr ? FootOnArc(*arc, p) : FootOnStraight(At(segment), At(segment + 1), p));
}

StationOffset PlanSnapshot::Conclude(const PointSearch& search, PlanePoint p) const {
  const size_t at = search.vertex;
  if (vertices_count_ && IsInterior(at) && search.feet.best > search.vertex_distance)
    return {0, points_[at].sek, OffsetFromVertex(&points_[at - 1], points_[at], p, search.vertex_distance)};
  return {search.feet.Result(), search.feet.station, search.feet.offset};
}

StationOffset PlanSnapshot::Find(PlanePoint p) const {
  PointSearch search = NewSearch();
  if (points_.empty()) return Conclude(search, p);
  // No segment is at a finite distance from a point that is not finite.
  if (!std::isfinite(p.h) || !std::isfinite(p.v)) return {-1, no_station_, 0};

  const size_t last = points_.size() - 1;
  for (const size_t end : {size_t{0}, last}) search.ConsiderVertex(end, Distance(p, At(end)));
  for (const std::uint32_t segment : unbounded_) {
    ConsiderSegment(segment, p, &search);
    for (const size_t end : {size_t{segment}, size_t{segment} + 1})
      search.ConsiderVertex(end, Distance(p, At(end)));
  }
  if (std::fabs(p.h) > kFarthestPoint || std::fabs(p.v) > kFarthestPoint) return Conclude(search, p);

  // A foot farther away than a vertex that may answer does not count. Once such a vertex is nearer than
  // both ends it remains so.
  const auto feet_beyond = [&] {
    const bool vertex_answers = vertices_count_ && IsInterior(search.vertex);
    return Beyond(vertex_answers ? std::min(search.feet.best, search.vertex_distance) : search.feet.best);
  };
  const auto vertices_beyond = [&] { return Beyond(std::min(search.feet.best, search.vertex_distance)); };
  tree_.Search(
      p,
      [&](const BoundTree::Node& node, double squared) {
        return squared <= vertices_beyond() || (squared <= feet_beyond() && node.MayHoldFoot(p));
      },
      [&](size_t leaf) {
        const size_t begin = leaf * BoundTree::kFan;
        const size_t end = std::min(begin + BoundTree::kFan, Segments());
        for (size_t i = begin; i < end; ++i) {
          ConsiderSegment(i, p, &search);
          search.ConsiderVertex(i, Distance(p, At(i)));
        }
      });
  axis_tree_.Search(
      p,
      [&](const BoundTree::Node& node, double squared) {
        return squared <= feet_beyond() && node.MayHoldFoot(p);
      },
      [&](size_t leaf) {
        const size_t begin = leaf * BoundTree::kFan;
        const size_t end = std::min(begin + BoundTree::kFan, axis_quirks_.size());
        for (size_t i = begin; i < end; ++i) ConsiderSegment(axis_quirks_[i].segment, p, &search);
      });
  return Conclude(search, p);
}

}  // namespace velmora
