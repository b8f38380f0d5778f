#include "velmora/alignment/geometry.h"

#include <gtest/gtest.h>

#include "tests/alignment/shapes.h"

namespace velmora {
namespace {

// Within 1e-5 m of the axis at the end of a quadrant the direction falls back to the quadrant's start.
TEST(Geometry, QuarterTurnJumpNearAnAxis) {
  struct Case {
    double dh, dv, angle;
  };
  const Case kCases[] = {
      {0.9e-5, 10, 0},        {1.1e-5, 10, kHalfPi},         // north, from the east
      {-10, 0.9e-5, kHalfPi}, {-10, 1.1e-5, kPi},            // west, from the north
      {-0.9e-5, -10, kPi},    {-1.1e-5, -10, kThreeHalfPi},  // south, from the west
      {10, -1.1e-5, kTwoPi},  {10, -0.9e-5, kThreeHalfPi},   // east, from the south
  };
  for (const Case& c : kCases) EXPECT_NEAR(DirectionFromCentre(c.dh, c.dv).angle, c.angle, 1e-5) << c.angle;
}

// Callers rely on the shorter way whatever the bulge says.
TEST(Geometry, AnArcOverHalfACircleRunsTheShorterWay) {
  const double three_quarters = std::tan(3 * std::acos(-1.0) / 8);
  const kovltype a{0, 10, three_quarters, 0}, b{10, 0, 0, 100};  // centre (10, 10), the long way round
  const PlanePoint middle = PointOnSegment(a, b, 50, 0);
  EXPECT_TRUE(Near({middle.h, middle.v}, {10 - std::sqrt(50.0), 10 - std::sqrt(50.0)}));
}

}  // namespace
}  // namespace velmora
