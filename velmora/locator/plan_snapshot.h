// The points of a plan laid out for searching, and the search by trees, which answers for every point: near
// the line, far from it and not finite. Immutable once built.
#ifndef VELMORA_LOCATOR_PLAN_SNAPSHOT_H_
#define VELMORA_LOCATOR_PLAN_SNAPSHOT_H_

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/alignment/geometry.h"
#include "velmora/alignment/station_search.h"
#include "velmora/locator/bound_tree.h"
#include "velmora/locator/merged_roads.h"
#include "velmora/platform/large_vector.h"

namespace velmora {

// Farther out than any foot that counts; squared distances do not overflow yet.
inline constexpr double kFarthestPoint = 1e100;
// A bound on squared distances that leaves room for rounding at any distance that counts.
double Beyond(double distance);

struct StationOffset {
  int result;  // as CVaglinje::Vagstv
  double station;
  double offset;
};

// The nearest foot and the nearest vertex of one point among those considered.
struct PointSearch {
  StationSearch feet;
  double vertex_distance = std::numeric_limits<double>::infinity();
  size_t vertex = 0;

  void ConsiderVertex(size_t index, double distance) {
    if (!(distance < vertex_distance || (distance == vertex_distance && index < vertex))) return;
    vertex_distance = distance;
    vertex = index;
  }
};

class PlanSnapshot {
 public:
  // A place at which an arc answers beside an axis through its centre (ArcBounds::axis_quirks).
  struct AxisQuirk {
    FootBound bound;
    std::uint32_t segment;
  };

  // One road; or several, made by `threads` threads (0: one a processor). Points are copied. @{
  PlanSnapshot(RoadPoints points, double no_station);
  PlanSnapshot(const MergedRoads& roads, double no_station, int threads);
  // @}

  size_t Vertices() const { return vertices_; }
  size_t Segments() const { return vertices_ < 2 ? 0 : vertices_ - 1; }
  bool Descending() const { return descending_; }
  // Each segment's mark among several roads, kBetweenRoads for one that joins two; null with one road.
  static constexpr std::uint32_t kBetweenRoads = 0xffffffff;
  const std::uint32_t* Roads() const { return roads_.empty() ? nullptr : roads_.data(); }
  bool IsBetweenRoads(size_t segment) const { return !roads_.empty() && roads_[segment] == kBetweenRoads; }
  PlanePoint At(size_t vertex) const { return {h_[vertex], v_[vertex]}; }
  // Without its bulge.
  kovltype PointAt(size_t vertex) const { return {v_[vertex], h_[vertex], 0, stations_[vertex]}; }
  // The offset of a point whose nearest vertex, which is not an end, is `distance` away.
  double OffsetFrom(size_t vertex, PlanePoint p, double distance) const {
    const kovltype before = PointAt(vertex - 1);
    return OffsetFromVertex(&before, PointAt(vertex), p, distance);
  }
  // Arrays for comparing several segments at once from any one on, with spare elements after the last:
  // coordinates, the inverse of a chord's squared length (0 for a degenerate one), and the chord slacks of
  // SegmentBounds, null when all are 0.
  const double* H() const { return h_.data(); }
  const double* V() const { return v_.data(); }
  const double* Stations() const { return stations_.data(); }
  const double* Inverse() const { return inverse_.data(); }
  const double* ChordSlacks() const { return chord_slacks_.empty() ? nullptr : chord_slacks_.data(); }
  double ChordSlack(size_t segment) const { return chord_slacks_.empty() ? 0.0 : chord_slacks_[segment]; }
  // The arc of a segment, null for a straight. It is computed when it is first asked for, and is then in
  // `room` if another thread is computing it.
  const ArcFrame* ArcOf(size_t segment, ArcFrame* room) const {
    if (arc_of_.empty()) return nullptr;
    const std::uint32_t arc = std::atomic_ref(arc_of_[segment]).load(std::memory_order_acquire);
    if (arc == kNoArc) return nullptr;
    return arc < kBeingMade ? &arcs_[arc] : MakeArc(segment, room);
  }
  // Whether comparing chords bounds the distances of a single road's feet.
  bool CanCompareAll() const { return roads_.empty() && axis_quirks_.empty() && !HasUnbounded(); }
  // Whether some segment has no bounds, so that no cell can list its candidates.
  bool HasUnbounded() const { return !unbounded_.empty(); }
  const std::vector<std::uint32_t>& Unbounded() const { return unbounded_; }
  const BoundingBox& Extent() const { return extent_; }
  const BoundTree& Tree() const { return tree_; }
  const BoundTree& AxisTree() const { return axis_tree_; }
  const std::vector<AxisQuirk>& AxisQuirks() const { return axis_quirks_; }

  PointSearch NewSearch() const { return {{descending_, no_station_}}; }
  void ConsiderSegment(size_t segment, PlanePoint p, PointSearch* search) const;
  // The answer of CVaglinje::Vagstv after the same segments and vertices.
  StationOffset Conclude(const PointSearch& search, PlanePoint p) const;
  // Whether the nearest vertex may answer: not an end.
  bool IsInterior(size_t vertex) const { return vertex > 0 && vertex + 1 < vertices_; }

  // The answer of CVaglinje::Vagstv with search mode 0, by the trees.
  StationOffset Find(PlanePoint p) const;

 private:
  // Of a segment's arc; a lower number is its position in arcs_.
  static constexpr std::uint32_t kNoArc = 0xffffffff;
  static constexpr std::uint32_t kNotMade = 0xfffffffe;
  static constexpr std::uint32_t kBeingMade = 0xfffffffd;

  struct Part;

  PlanSnapshot(std::span<const MergedRoads::Piece> pieces, size_t vertices, bool several, double no_station,
               int threads);
  void Fill(const MergedRoads::Piece& piece, size_t end, Part* part);
  void SetUnsearched(size_t begin, size_t end);
  void BoundLeaf(size_t begin, size_t end, Part* part);
  bool BoundPlainLeaf(size_t begin, size_t end, FootBound* leaf, Part* part);
  void BoundSegment(size_t i, FootBound* leaf, Part* part);
  void PutTogether(std::span<const Part> parts, int threads);
  const ArcFrame* MakeArc(size_t segment, ArcFrame* room) const;

  size_t vertices_;
  double no_station_;
  bool descending_ = false;
  bool vertices_count_ = false;  // not when the first is not a number: no other is then nearer
  LargeVector<double> h_, v_, stations_, inverse_, chord_slacks_, bulges_;
  LargeVector<std::uint32_t> roads_;
  mutable LargeVector<std::uint32_t> arc_of_;
  mutable LargeVector<ArcFrame> arcs_;
  mutable std::uint32_t arcs_made_ = 0;
  std::vector<std::uint32_t> unbounded_;
  BoundingBox extent_ = kEmptyBounds;
  BoundTree tree_;
  BoundTree axis_tree_;
  std::vector<AxisQuirk> axis_quirks_;
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_PLAN_SNAPSHOT_H_
