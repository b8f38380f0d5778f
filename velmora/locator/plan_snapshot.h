// The points of a plan laid out for searching, and the search that holds everywhere: near the line, far
// from it and for points that are nowhere. Immutable once built.
#ifndef VELMORA_LOCATOR_PLAN_SNAPSHOT_H_
#define VELMORA_LOCATOR_PLAN_SNAPSHOT_H_

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/alignment/geometry.h"
#include "velmora/alignment/station_search.h"
#include "velmora/locator/bound_tree.h"

namespace velmora {

struct StationOffset {
  int result;  // as CVaglinje::Vagstv
  double station;
  double offset;
};

// The nearest foot and the nearest vertex of one point among what was looked at.
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
  // One place at which an arc answers beside an axis through its centre.
  struct AxisQuirk {
    FootBound bound;
    std::uint32_t segment;
  };

  PlanSnapshot(std::vector<kovltype> points, double no_station);

  const std::vector<kovltype>& Points() const { return points_; }
  size_t Segments() const { return points_.size() < 2 ? 0 : points_.size() - 1; }
  bool Descending() const { return descending_; }
  PlanePoint At(size_t vertex) const { return {h_[vertex], v_[vertex]}; }
  // For comparing segments eight at a time from any one on, with some to spare after the last: coordinates,
  // the inverse of a chord's squared length (0 for a degenerate one), and the pads of SegmentBounds, null
  // when all are 0.
  const double* H() const { return h_.data(); }
  const double* V() const { return v_.data(); }
  const double* Stations() const { return stations_.data(); }
  const double* Inverse() const { return inverse_.data(); }
  const double* Pads() const { return pads_.empty() ? nullptr : pads_.data(); }
  double Pad(size_t segment) const { return pads_.empty() ? 0.0 : pads_[segment]; }
  const ArcFrame* ArcOf(size_t segment) const {
    return arc_of_.empty() || arc_of_[segment] == kNoArc ? nullptr : &arcs_[arc_of_[segment]];
  }
  // Whether a search may leave out segments that its bounds rule out.
  bool HasUnbounded() const { return !unbounded_.empty(); }
  const Box& Extent() const { return extent_; }
  const BoundTree& Tree() const { return tree_; }
  const BoundTree& AxisTree() const { return axis_tree_; }
  const std::vector<AxisQuirk>& AxisQuirks() const { return axis_places_; }

  PointSearch NewSearch() const { return {{descending_, no_station_}}; }
  void ConsiderSegment(size_t segment, PlanePoint p, PointSearch* search) const;
  // What CVaglinje::Vagstv answers when it has seen the same.
  StationOffset Conclude(const PointSearch& search, PlanePoint p) const;
  // Whether the nearest vertex may answer: not an end.
  bool IsInterior(size_t vertex) const { return vertex > 0 && vertex + 1 < points_.size(); }

  // The answer of CVaglinje::Vagstv with search mode 0, by the trees.
  StationOffset Find(PlanePoint p) const;

 private:
  static constexpr std::uint32_t kNoArc = 0xffffffff;

  void AddArcs();
  void Bound();

  std::vector<kovltype> points_;
  double no_station_;
  bool descending_;
  bool vertices_count_;  // false when the first is nowhere: no other is then nearer
  std::vector<double> h_, v_, stations_, inverse_, pads_;
  std::vector<ArcFrame> arcs_;
  std::vector<std::uint32_t> arc_of_;
  std::vector<std::uint32_t> unbounded_;
  Box extent_ = kEmptyBox;
  BoundTree tree_;
  BoundTree axis_tree_;
  std::vector<AxisQuirk> axis_places_;
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_PLAN_SNAPSHOT_H_
