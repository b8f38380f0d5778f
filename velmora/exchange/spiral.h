// Clothoids as arcs.
#ifndef VELMORA_EXCHANGE_SPIRAL_H_
#define VELMORA_EXCHANGE_SPIRAL_H_

#include <optional>
#include <vector>

#include "velmora/alignment/geometry.h"

namespace velmora::exchange {

// A curve between two points whose curvature, positive counter-clockwise, grows with length.
struct Spiral {
  PlanePoint start;
  PlanePoint end;
  double length;
  double curvature_start;  // 1/m
  double curvature_end;
};

struct SpiralArcs {
  std::vector<kovltype> points;  // from the start to the end, each with the bulge after it
  double largest_distance = 0;   // m, between arcs and spiral
  double misfit = 0;             // m, between the distance of the ends and what the length and the radii give
  double direction_start = 0;    // of the spiral's tangents, radians from east, counter-clockwise
  double direction_end = 0;
};
// As few arcs of equal length as keep within `error`, each through two points of the spiral and the one
// halfway; the misfit is a part of the error, and where it alone is larger, the arcs keep to nothing. Nothing
// when the spiral turns by more than a full circle, or needs more than kMostSpiralArcs.
inline constexpr int kMostSpiralArcs = 1000;
std::optional<SpiralArcs> ArcsOfSpiral(const Spiral& spiral, double error);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_SPIRAL_H_
