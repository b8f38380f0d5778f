#include "velmora/locator/plan_snapshot.h"

#include <algorithm>
#include <cmath>

#include "velmora/platform/in_threads.h"

namespace velmora {
namespace {

constexpr size_t kSpare = 16;  // elements after the last vertex
constexpr size_t kSegmentsInPart = size_t{1} << 14;
static_assert(kSegmentsInPart % BoundTree::kFan == 0);  // parts share no leaf

}  // namespace

double Beyond(double distance) {
  const double limit = distance * (1 + 1e-12) + 1e-5;
  return limit * limit;
}

// What is found about some consecutive segments, to be put together with that of the others.
struct PlanSnapshot::Part {
  size_t begin;
  size_t end;
  std::vector<double> chord_slacks;  // empty when all are 0
  std::vector<std::uint32_t> unbounded;
  std::vector<AxisQuirk> axis_quirks;
};

PlanSnapshot::PlanSnapshot(std::vector<kovltype> points, double no_station, std::vector<std::uint32_t> roads,
                           int threads)
    : points_(std::move(points)),
      roads_(std::move(roads)),
      no_station_(no_station),
      descending_(IsDescending(points_)),
      vertices_count_(!points_.empty() && !std::isnan(points_[0].x) && !std::isnan(points_[0].y)) {
  if (points_.empty()) return;
  for (LargeVector<double>* array : {&h_, &v_, &stations_, &inverse_}) array->resize(points_.size() + kSpare);
  NumberArcs();
  std::vector<FootBound> leaves((Segments() + BoundTree::kFan - 1) / BoundTree::kFan);
  std::vector<Part> parts(Segments() / kSegmentsInPart + 1);
  InThreads(parts.size(), parts.size() == 1 ? 1 : threads, [&](size_t i) {
    parts[i].begin = i * kSegmentsInPart;
    parts[i].end = std::min(parts[i].begin + kSegmentsInPart, Segments());
    Fill(parts[i]);
    Bound(&parts[i], &leaves);
  });
  for (size_t i = points_.size() - 1; i < points_.size() + kSpare; ++i) {
    h_[i] = points_.back().y;
    v_[i] = points_.back().x;
    stations_[i] = points_.back().sek;
  }
  PutTogether(parts, std::move(leaves));
}

void PlanSnapshot::NumberArcs() {
  const auto is_arc = [](const kovltype& a) { return !IsStraight(a.bulge); };
  if (std::none_of(points_.begin(), points_.end() - 1, is_arc)) return;
  arc_of_.assign(points_.size(), kNoArc);
  std::uint32_t arcs = 0;
  for (size_t i = 0; i < Segments(); ++i)
    if (is_arc(points_[i])) arc_of_[i] = arcs++;
  arcs_.resize(arcs);
}

void PlanSnapshot::Fill(const Part& part) {
  for (size_t i = part.begin; i < part.end; ++i) {
    const PlanePoint a = InPlane(points_[i]);
    const PlanePoint b = InPlane(points_[i + 1]);
    h_[i] = a.h;
    v_[i] = a.v;
    stations_[i] = points_[i].sek;
    const double dh = b.h - a.h;
    const double dv = b.v - a.v;
    const double squared = dh * dh + dv * dv;
    inverse_[i] = squared >= kShortestSquared ? 1 / squared : 0;
    if (!arc_of_.empty() && arc_of_[i] != kNoArc) arcs_[arc_of_[i]] = FrameOfArc(a, points_[i].bulge, b);
  }
}

void PlanSnapshot::Bound(Part* part, std::vector<FootBound>* leaves) const {
  static_assert(BoundTree::kFan <= StraightTangents::kMost);
  for (size_t begin = part->begin; begin < part->end; begin += BoundTree::kFan) {
    FootBound& leaf = (*leaves)[begin / BoundTree::kFan];
    StraightTangents straights;
    for (size_t i = begin; i < std::min(begin + BoundTree::kFan, part->end); ++i) {
      if (IsBetweenRoads(i)) continue;
      const PlanePoint a = InPlane(points_[i]);
      const PlanePoint b = InPlane(points_[i + 1]);
      SegmentBounds bounds;
      if (const ArcFrame* const frame = ArcOf(i)) {
        const ArcBounds arc = BoundsOfArc(a, b, *frame);
        bounds = arc.segment;
        leaf.tangents.Include(arc.tangents);
        for (const FootBound& quirk : arc.axis_quirks)
          part->axis_quirks.push_back({quirk, static_cast<std::uint32_t>(i)});
      } else {
        bounds = BoundsOfStraight(a, b);
        if (!bounds.unbounded) straights.Add(a, b, inverse_[i]);
      }
      if (bounds.unbounded) {
        part->unbounded.push_back(static_cast<std::uint32_t>(i));
        continue;
      }
      leaf.box.Include(bounds.box);
      if (bounds.chord_slack > 0) {
        part->chord_slacks.resize(part->end - part->begin);
        part->chord_slacks[i - part->begin] = bounds.chord_slack;
      }
    }
    leaf.tangents.Include(straights.All());
  }
}

void PlanSnapshot::PutTogether(const std::vector<Part>& parts, std::vector<FootBound> leaves) {
  for (const Part& part : parts) {
    unbounded_.insert(unbounded_.end(), part.unbounded.begin(), part.unbounded.end());
    axis_quirks_.insert(axis_quirks_.end(), part.axis_quirks.begin(), part.axis_quirks.end());
    if (part.chord_slacks.empty()) continue;
    chord_slacks_.resize(h_.size());
    std::copy(part.chord_slacks.begin(), part.chord_slacks.end(),
              chord_slacks_.begin() + static_cast<std::ptrdiff_t>(part.begin));
  }
  for (const FootBound& leaf : leaves) extent_.Include(leaf.box);
  tree_.Build(std::move(leaves));
  std::vector<FootBound> quirk_leaves((axis_quirks_.size() + BoundTree::kFan - 1) / BoundTree::kFan);
  for (size_t i = 0; i < axis_quirks_.size(); ++i)
    quirk_leaves[i / BoundTree::kFan].Include(axis_quirks_[i].bound);
  axis_tree_.Build(std::move(quirk_leaves));
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
