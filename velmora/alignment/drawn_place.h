// The station and offset of a point on the line as it is drawn.
//
// Programs rely on what CVaglinje::Vagstv gives beside the axes through an arc's centre (a station that is a
// quarter of the circle off) and at corners (the side of the straight before them, whatever the direction of
// stationing). People who read a list or a drawing need the place itself, which is found here.
#ifndef VELMORA_ALIGNMENT_DRAWN_PLACE_H_
#define VELMORA_ALIGNMENT_DRAWN_PLACE_H_

#include <bit>
#include <cstdint>
#include <optional>
#include <vector>

#include "velmora/alignment/box_runs.h"
#include "velmora/alignment/geometry.h"

namespace velmora {

struct LinePlace {
  double station;
  double offset;  // m, positive to the right towards higher stations
};

// As FootOnSegment, without the quarter-turn jump. The foot on an arc is on the arc itself.
Foot DrawnFoot(const kovltype& a, const kovltype& b, PlanePoint p);

// As PointOnSegment, on the arc that the bulge describes however far round that is.
PlanePoint DrawnPoint(const kovltype& a, const kovltype& b, double station, double offset);

// Whether an end of the arc from `a` to `b` lies so close beside an axis through its centre that the searches
// take it for a point a quarter of the circle away.
bool EndsBesideAxis(const kovltype& a, const kovltype& b);

// Coordinates, of which a point's is compared with all at once.
class Coordinates {
 public:
  void Add(double value) { values_.push_back(value); }
  // Before the first question.
  void Prepare();
  // Whether one of them lies within kReach of `value`.
  bool Near(double value) const { return !cells_.empty() && cells_[Cell(value)] != 0 && IsNear(value); }

 private:
  static constexpr double kReach = 2 * kQuadrantTolerance;

  // Cells are about 1 mm wide; the sum leaves a cell's number in the low bits.
  size_t Cell(double value) const {
    return static_cast<size_t>(
        (std::bit_cast<std::uint64_t>(value * 1024 + 0x1.8p52) * 0x9E3779B97F4A7C15U) >> shift_);
  }
  bool IsNear(double value) const;

  std::vector<double> values_;       // in order
  std::vector<std::uint8_t> cells_;  // whether there is a value in a cell of this number, or another's
  int shift_ = 0;
};

// Whether PointOnSegment, which runs the shorter way round, leaves the arc that the bulge describes: so on
// arcs of more than half a circle, and on half circles of one of the two bulges.
bool RunsTheOtherWay(const kovltype& a, const kovltype& b);

// The places of many points. Immutable, so safe to use from many threads at once.
class DrawnPlaces {
 public:
  explicit DrawnPlaces(std::vector<kovltype> plan);

  // Whether the place that Vagstv finds for `p` may be another one; takes nanoseconds.
  bool MayDiffer(PlanePoint p) const { return !corners_.empty() || !axis_arcs_.empty() || IsBesideAxis(p); }
  // Replaces what Vagstv found, with search mode 0 (`vertices`) or 2, by the place on the drawn line. Returns
  // whether that is another one.
  bool Correct(PlanePoint p, bool vertices, std::optional<LinePlace>* found) const;

 private:
  struct Corner {
    double station;
    size_t point;
  };
  struct AxisArc {
    kovltype a;
    kovltype b;
    Arc circle;
  };

  bool IsBesideAxis(PlanePoint p) const { return eastings_.Near(p.h) || northings_.Near(p.v); }
  bool TakesJump(PlanePoint p, const std::optional<LinePlace>& found) const;
  std::optional<LinePlace> Search(PlanePoint p, bool vertices) const;
  double OffsetFrom(size_t vertex, PlanePoint p) const;

  std::vector<kovltype> plan_;
  bool descending_;
  std::vector<Corner> corners_;     // by station: those where the side found may be wrong
  std::vector<AxisArc> axis_arcs_;  // those that end beside an axis
  BoxRuns circles_;                 // of these arcs
  BoxRuns segments_;
  Coordinates eastings_;  // of all arcs' centres
  Coordinates northings_;
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_DRAWN_PLACE_H_
