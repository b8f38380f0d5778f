#include "velmora/alignment/geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace velmora {
namespace {

const double kQuarterBulge = std::tan(std::acos(-1.0) / 8);

// From (10, 0) to (0, 10) a quarter turn lies on the circle of 10 m around the origin when it turns
// counter-clockwise, around (10, 10) when clockwise.
TEST(Geometry, APositiveBulgeHasItsCentreToTheLeft) {
  const Arc left = ArcFromBulge({10, 0}, {0, 10}, kQuarterBulge);
  EXPECT_NEAR(left.radius, 10, 1e-12);
  EXPECT_NEAR(left.centre.h, 0, 1e-12);
  EXPECT_NEAR(left.centre.v, 0, 1e-12);
  const Arc right = ArcFromBulge({10, 0}, {0, 10}, -kQuarterBulge);
  EXPECT_NEAR(right.radius, 10, 1e-12);
  EXPECT_NEAR(right.centre.h, 10, 1e-12);
  EXPECT_NEAR(right.centre.v, 10, 1e-12);
}

TEST(Geometry, BulgeFromRadiusTurnsAgainstTheRadiusSign) {
  EXPECT_NEAR(BulgeFromRadius({10, 0}, {0, 10}, 10).value(), -kQuarterBulge, 1e-12);
  // A negative radius adds the root of its square to itself and so gives the shorter arc, too.
  EXPECT_NEAR(BulgeFromRadius({10, 0}, {0, 10}, -10).value(), kQuarterBulge, 1e-12);
  EXPECT_NEAR(BulgeFromRadius({0, 0}, {20, 0}, 10).value(), -1, 1e-12);
  EXPECT_FALSE(BulgeFromRadius({0, 0}, {30, 0}, 10).has_value());
  EXPECT_FALSE(BulgeFromRadius({0, 0}, {30, 0}, 0).has_value());
  EXPECT_FALSE(BulgeFromRadius({4, 4}, {4, 4}, 10).has_value());
}

struct StraightCase {
  PlanePoint p;
  FootPlace place;
  double along, offset;
};
TEST(Geometry, FootOnAStraightGoingEast) {
  const StraightCase kCases[] = {
      {{50, -5}, FootPlace::kInside, 50, 5},  // right
      {{50, 5}, FootPlace::kInside, 50, -5},
      {{-0.009, 1}, FootPlace::kInside, -0.009, -1},  // a ten-thousandth before and beyond
      {{-0.011, 1}, FootPlace::kOutside, -0.011, -1},
      {{100.009, 1}, FootPlace::kInside, 100.009, -1},
      {{100.011, 1}, FootPlace::kOutside, 100.011, -1},
  };
  for (const StraightCase& c : kCases) {
    SCOPED_TRACE(c.p.h);
    const Foot foot = FootOnStraight({0, 0}, {100, 0}, c.p);
    EXPECT_EQ(foot.place, c.place);
    EXPECT_NEAR(foot.along, c.along, 1e-12);
    EXPECT_NEAR(foot.offset, c.offset, 1e-12);
  }
  EXPECT_EQ(FootOnStraight({0, 0}, {0.00999, 0}, {0, 0}).place, FootPlace::kDegenerate);
  EXPECT_EQ(FootOnStraight({0, 0}, {0.01001, 0}, {0, 0}).place, FootPlace::kInside);
}

TEST(Geometry, DirectionsRiseCounterClockwiseFromEast) {
  Direction last{-1, -1};
  for (int degree = 0; degree < 360; ++degree) {
    const double angle = degree * std::acos(-1.0) / 180;
    // Whole axes exactly: a cosine of 6e-17 would be a foot near an axis, see below.
    const double dh = degree % 180 == 90 ? 0 : 7 * std::cos(angle),
                 dv = degree % 180 == 0 ? 0 : 7 * std::sin(angle);
    if (degree == 90 || degree == 180 || degree == 270) continue;
    const Direction direction = DirectionFromCentre(dh, dv);
    EXPECT_GT(direction.rank, last.rank) << degree;
    EXPECT_NEAR(direction.angle, angle, 1e-10) << degree;
    last = direction;
  }
}

// Within 1e-5 m of the axis at the end of a quadrant the direction falls back to the quadrant's start.
TEST(Geometry, QuarterTurnJumpNearAnAxis) {
  struct Case {
    double dh, dv, rank, angle;
  };
  const Case kCases[] = {
      {0.9e-5, 10, 0, 0},
      {1.1e-5, 10, 1, kHalfPi},  // north, from the east
      {-10, 0.9e-5, 1, kHalfPi},
      {-10, 1.1e-5, 2, kPi},  // west, from the north
      {-0.9e-5, -10, 2, kPi},
      {-1.1e-5, -10, 3, kThreeHalfPi},  // south, from the west
      {10, -0.9e-5, 3, kThreeHalfPi},
      {10, -1.1e-5, 4, kTwoPi},  // east, from the south
      {0, 10, 0, 0},
      {0, -10, 2, kPi},
      {10, 0, 0, 0},  // on an axis
      {-10, 0, 1, kHalfPi},
      {0, 0, 0, 0},
  };
  for (const Case& c : kCases) {
    const Direction direction = DirectionFromCentre(c.dh, c.dv);
    EXPECT_NEAR(direction.rank, c.rank, 1e-5) << c.dh << " " << c.dv;
    EXPECT_NEAR(direction.angle, c.angle, 1e-5) << c.dh << " " << c.dv;
  }
}

TEST(Geometry, TheFootOnAnArcTakesTheJump) {
  // From just south of east to just short of north: a point 1e-6 m from the northern axis, beyond the
  // arc's end, counts as due east and lies inside.
  const PlanePoint a{10 * std::cos(-0.1), 10 * std::sin(-0.1)}, b{10 * std::cos(1.5), 10 * std::sin(1.5)};
  const double bulge = std::tan(1.6 / 4);
  const Foot foot = FootOnArc(a, bulge, b, {1e-6, 12});
  EXPECT_EQ(foot.place, FootPlace::kInside);
  EXPECT_NEAR(foot.along, 10 * 0.1, 1e-9);
  EXPECT_NEAR(foot.offset, 2, 1e-9);
  EXPECT_EQ(FootOnArc(a, bulge, b, {2e-5, 12}).place, FootPlace::kOutside);
}

TEST(Geometry, AnArcOverTheEastAxisHoldsBothSides) {
  const PlanePoint south_east{10 * std::cos(-0.5), 10 * std::sin(-0.5)},
      north_east{10 * std::cos(0.7), 10 * std::sin(0.7)};
  const double bulge = std::tan(1.2 / 4);
  const PlanePoint inner{8 * std::cos(0.3), 8 * std::sin(0.3)};
  const Foot up = FootOnArc(south_east, bulge, north_east, inner);
  EXPECT_EQ(up.place, FootPlace::kInside);
  EXPECT_NEAR(up.along, 10 * 0.8, 1e-9);
  EXPECT_NEAR(up.offset, -2, 1e-9);  // the centre of a counter-clockwise arc lies to its left
  const Foot down = FootOnArc(north_east, -bulge, south_east, inner);
  EXPECT_EQ(down.place, FootPlace::kInside);
  EXPECT_NEAR(down.along, 10 * 0.4, 1e-9);
  EXPECT_NEAR(down.offset, 2, 1e-9);
  EXPECT_EQ(FootOnArc(south_east, bulge, north_east, {0, 9}).place, FootPlace::kOutside);
}

// Callers rely on the shorter way whatever the bulge says.
TEST(Geometry, AnArcOverHalfACircleRunsTheShorterWay) {
  const double three_quarters = std::tan(3 * std::acos(-1.0) / 8);
  const kovltype a{0, 10, three_quarters, 0}, b{10, 0, 0, 100};  // centre (10, 10), the long way round
  const PlanePoint middle = PointOnSegment(a, b, 50, 0);
  const double near = 10 - std::sqrt(50.0);
  EXPECT_NEAR(middle.h, near, 1e-9);
  EXPECT_NEAR(middle.v, near, 1e-9);
}

TEST(Geometry, NoCircleGivesNoLength) {
  EXPECT_EQ(ArcLength({3, 4}, {3, 4}, 0.5), 0.0);
  EXPECT_NEAR(ArcLength({8, 6}, {-6, 8}, kQuarterBulge), 5 * std::acos(-1.0), 1e-9);
  EXPECT_NEAR(ArcLength({8, 6}, {-6, 8}, -kQuarterBulge), 5 * std::acos(-1.0), 1e-9);
}

}  // namespace
}  // namespace velmora
