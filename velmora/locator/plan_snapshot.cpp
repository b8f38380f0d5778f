#include "velmora/locator/plan_snapshot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "velmora/platform/in_threads.h"

namespace velmora {
namespace {

constexpr size_t kSpare = 16;  // elements after the last vertex
// Of the parts that threads fill: as large as a large page of an array's memory, as two threads that touch a
// new page at once are both handed one, of which one is discarded.
constexpr size_t kMostInPart = kLargePiece / sizeof(double);
constexpr size_t kLeastInPart = kMostInPart / 16;
constexpr size_t kPartsForThread = 4;
// Of the vertices between roads. The square of its distance from anything overflows.
constexpr double kBeyondAll = 1e160;

}  // namespace

double Beyond(double distance) {
  const double limit = distance * (1 + 1e-12) + 1e-5;
  return limit * limit;
}

// What is found about some consecutive roads, to be put together with that of the others.
struct PlanSnapshot::Part {
  std::span<const MergedRoads::Piece> pieces;
  size_t end = 0;  // vertex after the last
  size_t arcs = 0;
  BoundingBox extent = kEmptyBounds;
  std::vector<std::pair<size_t, double>> chord_slacks;  // where there is no array of them: of a few segments
  std::vector<std::uint32_t> unbounded;
  std::vector<AxisQuirk> axis_quirks;
};

PlanSnapshot::PlanSnapshot(RoadPoints points, double no_station)
    : PlanSnapshot(std::array{MergedRoads::Piece{points, 0, 0, HasArcs(points)}}, points.size(), false,
                   no_station, 1) {}

PlanSnapshot::PlanSnapshot(const MergedRoads& roads, double no_station, int threads)
    : PlanSnapshot(roads.pieces, roads.vertices, true, no_station, threads) {}

PlanSnapshot::PlanSnapshot(std::span<const MergedRoads::Piece> pieces, size_t vertices, bool several,
                           double no_station, int threads)
    : vertices_(vertices), no_station_(no_station) {
  if (vertices == 0) return;
  const RoadPoints first = pieces[0].points;
  descending_ = IsDescending(first);
  vertices_count_ = !std::isnan(first[0].x) && !std::isnan(first[0].y);
  const size_t size = vertices + kSpare;
  for (LargeVector<double>* array : {&h_, &v_, &stations_, &inverse_}) array->resize(size);
  if (several) roads_.resize(size);
  if (std::any_of(pieces.begin(), pieces.end(), [](const auto& piece) { return piece.has_arcs; })) {
    for (LargeVector<double>* array : {&bulges_, &chord_slacks_}) array->resize(size);
    arc_of_.resize(size);
  }
  tree_.Begin(Segments());

  std::vector<Part> parts;
  const size_t in_part =
      std::clamp(vertices / (ThreadsFor(threads) * kPartsForThread), kLeastInPart, kMostInPart);
  for (size_t i = 0; i < pieces.size();) {
    const size_t from = i;
    while (++i < pieces.size() && pieces[i].begin - pieces[from].begin < in_part) {
    }
    parts.emplace_back().pieces = pieces.subspan(from, i - from);
    parts.back().end = i < pieces.size() ? pieces[i].begin : vertices;
  }
  InThreads(parts.size(), threads, [&](size_t i) {
    Part& part = parts[i];
    for (size_t k = 0; k < part.pieces.size(); ++k)
      Fill(part.pieces[k], k + 1 < part.pieces.size() ? part.pieces[k + 1].begin : part.end, &part);
  });
  SetUnsearched(vertices - 1, size);
  for (size_t i = vertices; i < size; ++i) {
    h_[i] = h_[vertices - 1];
    v_[i] = v_[vertices - 1];
    stations_[i] = stations_[vertices - 1];
  }
  PutTogether(parts, threads);
}

// Nothing else than coordinates and stations of what begins at these vertices is used.
void PlanSnapshot::SetUnsearched(size_t begin, size_t end) {
  std::fill(&inverse_[begin], &inverse_[end], 0.0);
  if (!roads_.empty()) std::fill(&roads_[begin], &roads_[end], kBetweenRoads);
  if (arc_of_.empty()) return;
  std::fill(&chord_slacks_[begin], &chord_slacks_[end], 0.0);
  std::fill(&arc_of_[begin], &arc_of_[end], kNoArc);
}

// With what lies between the road and `end`.
void PlanSnapshot::Fill(const MergedRoads::Piece& piece, size_t end, Part* part) {
  const size_t begin = piece.begin;
  const size_t last = begin + piece.points.size() - 1;
  for (size_t i = begin; i <= last; ++i) {
    const kovltype& point = piece.points[i - begin];
    h_[i] = point.y;
    v_[i] = point.x;
    stations_[i] = point.sek;
    if (!bulges_.empty()) bulges_[i] = point.bulge;
  }
  for (size_t i = last + 1; i < end; ++i) {
    h_[i] = v_[i] = kBeyondAll;
    stations_[i] = 0;
  }
  for (size_t i = begin; i < last; ++i) {
    const double dh = h_[i + 1] - h_[i];
    const double dv = v_[i + 1] - v_[i];
    const double squared = dh * dh + dv * dv;
    inverse_[i] = squared >= kShortestSquared ? 1 / squared : 0;
  }
  if (!roads_.empty()) std::fill(&roads_[begin], &roads_[last], piece.mark);
  SetUnsearched(last, end);
  for (size_t from = begin; from < std::min(end, Segments()); from += BoundTree::kFan)
    BoundLeaf(from, std::min(from + BoundTree::kFan, std::max(from, last)), part);
}

void PlanSnapshot::BoundLeaf(size_t begin, size_t end, Part* part) {
  FootBound leaf;
  if (begin < end && !BoundPlainLeaf(begin, end, &leaf, part))
    for (size_t i = begin; i < end; ++i) BoundSegment(i, &leaf, part);
  part->extent.Include(leaf.box);
  tree_.SetLeaf(begin / BoundTree::kFan, leaf);
}

// All segments at once where they are neither very long nor very short; false, with nothing done, for others.
bool PlanSnapshot::BoundPlainLeaf(size_t begin, size_t end, FootBound* leaf, Part* part) {
  constexpr double kLeastInverse = 1.01 / (kLongStraight * kLongStraight);
  constexpr double kMostInverse = 0.99 / (kShortStraight * kShortStraight);
  BoundingBox box = kEmptyBounds;
  double least = inverse_[begin];
  double most = least;
  for (size_t i = begin; i < end; ++i) {
    box.Include(At(i));
    least = std::min(least, inverse_[i]);
    most = std::max(most, inverse_[i]);
  }
  box.Include(At(end));
  if (!(least >= kLeastInverse && most <= kMostInverse && box.low.h >= -kLargestCoordinate &&
        box.low.v >= -kLargestCoordinate && box.high.h <= kLargestCoordinate &&
        box.high.v <= kLargestCoordinate))
    return false;
  double noise = 0;
  double bend = 0;
  for (size_t i = begin; i < end && !arc_of_.empty(); ++i) {
    chord_slacks_[i] = 0;
    arc_of_[i] = kNoArc;
    if (IsStraight(bulges_[i])) continue;
    const PlanePoint a = At(i);
    const PlanePoint b = At(i + 1);
    const std::optional<FlatArc> arc = AsFlatArc({b.h - a.h, b.v - a.v}, bulges_[i]);
    if (!arc) {
      BoundSegment(i, leaf, part);
      continue;
    }
    chord_slacks_[i] = arc->sagitta + arc->noise;
    arc_of_[i] = kNotMade;
    ++part->arcs;
    noise = std::max(noise, arc->noise);
    bend = std::max(bend, arc->bend);
  }
  box.Grow(ReachOfStraight(1 / std::sqrt(least)) + noise);
  leaf->box.Include(box);
  leaf->tangents.Include(TangentsOfChords(&h_[begin], &v_[begin], &inverse_[begin], end - begin, bend));
  return true;
}

void PlanSnapshot::BoundSegment(size_t i, FootBound* leaf, Part* part) {
  const PlanePoint a = At(i);
  const PlanePoint b = At(i + 1);
  SegmentBounds bounds;
  if (bulges_.empty() || IsStraight(bulges_[i])) {
    bounds = BoundsOfStraight(a, b);
    if (!bounds.unbounded && inverse_[i] != 0)
      leaf->tangents.Include(TangentsOfChords(&h_[i], &v_[i], &inverse_[i], 1, 0));
    if (!arc_of_.empty()) arc_of_[i] = kNoArc;
  } else {
    const ArcBounds arc = BoundsOfArc(a, b, FrameOfArc(a, bulges_[i], b));
    bounds = arc.segment;
    leaf->tangents.Include(arc.tangents);
    for (const FootBound& quirk : arc.axis_quirks)
      part->axis_quirks.push_back({quirk, static_cast<std::uint32_t>(i)});
    arc_of_[i] = kNotMade;
    ++part->arcs;
  }
  if (bounds.unbounded) {
    part->unbounded.push_back(static_cast<std::uint32_t>(i));
    bounds.chord_slack = 0;
  } else {
    leaf->box.Include(bounds.box);
  }
  if (!chord_slacks_.empty())
    chord_slacks_[i] = bounds.chord_slack;
  else if (bounds.chord_slack > 0)
    part->chord_slacks.emplace_back(i, bounds.chord_slack);
}

void PlanSnapshot::PutTogether(std::span<const Part> parts, int threads) {
  size_t arcs = 0;
  for (const Part& part : parts) {
    arcs += part.arcs;
    extent_.Include(part.extent);
    unbounded_.insert(unbounded_.end(), part.unbounded.begin(), part.unbounded.end());
    axis_quirks_.insert(axis_quirks_.end(), part.axis_quirks.begin(), part.axis_quirks.end());
    if (part.chord_slacks.empty()) continue;
    if (chord_slacks_.empty()) chord_slacks_.resize(h_.size(), 0.0);
    for (const auto& [segment, slack] : part.chord_slacks) chord_slacks_[segment] = slack;
  }
  arcs_.resize(arcs);
  tree_.Finish(threads);
  axis_tree_.Begin(axis_quirks_.size());
  for (size_t begin = 0; begin < axis_quirks_.size(); begin += BoundTree::kFan) {
    FootBound leaf;
    for (size_t i = begin; i < std::min(begin + BoundTree::kFan, axis_quirks_.size()); ++i)
      leaf.Include(axis_quirks_[i].bound);
    axis_tree_.SetLeaf(begin / BoundTree::kFan, leaf);
  }
  axis_tree_.Finish(threads);
}

const ArcFrame* PlanSnapshot::MakeArc(size_t segment, ArcFrame* room) const {
  *room = FrameOfArc(At(segment), bulges_[segment], At(segment + 1));
  std::atomic_ref arc_of(arc_of_[segment]);
  std::uint32_t state = kNotMade;
  if (!arc_of.compare_exchange_strong(state, kBeingMade, std::memory_order_relaxed)) return room;
  const std::uint32_t arc = std::atomic_ref(arcs_made_).fetch_add(1, std::memory_order_relaxed);
  arcs_[arc] = *room;
  arc_of.store(arc, std::memory_order_release);
  return room;
}

void PlanSnapshot::ConsiderSegment(size_t segment, PlanePoint p, PointSearch* search) const {
  ArcFrame room;  // NOLINT: filled where it is used
  const ArcFrame* arc = ArcOf(segment, &room);
  search->feet.Consider(segment, PointAt(segment),
                        arc != nullptr ? FootOnArc(*arc, p, search->feet.best)
                                       : FootOnStraight(At(segment), At(segment + 1), p));
}

StationOffset PlanSnapshot::Conclude(const PointSearch& search, PlanePoint p) const {
  const size_t at = search.vertex;
  if (vertices_count_ && IsInterior(at) && search.feet.best > search.vertex_distance)
    return {0, stations_[at], OffsetFrom(at, p, search.vertex_distance)};
  return {search.feet.Result(), search.feet.station, search.feet.offset};
}

StationOffset PlanSnapshot::Find(PlanePoint p) const {
  PointSearch search = NewSearch();
  if (vertices_ == 0) return Conclude(search, p);
  // No segment is at a finite distance from a point that is not finite.
  if (!std::isfinite(p.h) || !std::isfinite(p.v)) return {-1, no_station_, 0};

  const size_t last = vertices_ - 1;
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
