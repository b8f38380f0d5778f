#include "cli/align/off_end.h"

#include <cmath>

namespace velmora::cli {
namespace {

// The direction of travel where a segment begins (`at_start`) or ends: an arc's differs from its chord by
// half its sweep, to the right at the start of one that turns counter-clockwise.
PlanePoint Tangent(const kovltype& a, const kovltype& b, bool at_start) {
  const double half_sweep = 2 * std::atan(a.bulge) * (at_start ? -1 : 1);
  const double c = std::cos(half_sweep);
  const double s = std::sin(half_sweep);
  const PlanePoint chord{b.y - a.y, b.x - a.x};
  return {chord.h * c - chord.v * s, chord.h * s + chord.v * c};
}

bool Ahead(PlanePoint from, PlanePoint direction, PlanePoint p) {
  return (p.h - from.h) * direction.h + (p.v - from.v) * direction.v > 0;
}

OffEnd BehindEnd(const std::vector<kovltype>& plan, size_t end, PlanePoint p) {
  const size_t last = plan.size() - 1;
  if (end == 0) {
    const PlanePoint leaving = Tangent(plan[0], plan[1], true);
    return Ahead(InPlane(plan[0]), {-leaving.h, -leaving.v}, p) ? OffEnd::kBeforeStart : OffEnd::kNothing;
  }
  const bool ahead = Ahead(InPlane(plan[last]), Tangent(plan[last - 1], plan[last], false), p);
  return ahead ? OffEnd::kBeyondEnd : OffEnd::kNothing;
}

}  // namespace

OffEnd WhyMissed(const std::vector<kovltype>& plan, PlanePoint p) {
  if (plan.size() < 2) return OffEnd::kNothing;
  size_t nearest = 0;
  for (size_t i = 1; i < plan.size(); ++i)
    if (Distance(p, InPlane(plan[i])) < Distance(p, InPlane(plan[nearest]))) nearest = i;
  return nearest == 0 || nearest == plan.size() - 1 ? BehindEnd(plan, nearest, p) : OffEnd::kNothing;
}

OffEnd WhyMissedAtEnd(const std::vector<kovltype>& plan, PlanePoint p) {
  if (plan.size() < 2) return OffEnd::kNothing;
  const bool first = Distance(p, InPlane(plan.front())) <= Distance(p, InPlane(plan.back()));
  return BehindEnd(plan, first ? 0 : plan.size() - 1, p);
}

}  // namespace velmora::cli
