#include "velmora/alignment/geometry.h"

#include <gtest/gtest.h>

#include "tests/support/recorded_messages.h"
#include "velmora/alignment/checks.h"
#include "velmora/alignment/vaglinje.h"

namespace velmora {
namespace {

// Within 1e-5 m of the axis at the end of a quadrant the direction falls back to the quadrant's start.
TEST(Geometry, QuarterTurnJumpNearAnAxis) {
  const struct {
    double dh, dv, angle;
  } kCases[] = {
      {0.999e-5, 10, 0},        {1.001e-5, 10, kHalfPi},         // north, from the east
      {-10, 0.999e-5, kHalfPi}, {-10, 1.001e-5, kPi},            // west, from the north
      {-0.999e-5, -10, kPi},    {-1.001e-5, -10, kThreeHalfPi},  // south, from the west
      {10, -1.001e-5, kTwoPi},  {10, -0.999e-5, kThreeHalfPi},   // east, from the south
  };
  for (const auto& c : kCases) EXPECT_NEAR(DirectionFromCentre(c.dh, c.dv).Angle(), c.angle, 1e-5) << c.angle;
}

TEST(Geometry, AnImpossibleRadiusIsReported) {
  const RecordedMessages messages;
  CVaglinje profile;
  profile.typ = 10;
  kokotype a{0, 0, 0.5}, b{30, 0, 0};
  double radius = 10, k1 = 7, k2 = 8;
  EXPECT_EQ(profile.Bulge_r(&a, &b, &radius, &k1, &k2, 0), 0);
  EXPECT_EQ(a.bulge, 0);
  EXPECT_EQ(messages.status,
            std::vector<CString>{L"Fel (bulge->radie) radie: 10.00 (0.00,0.00 - 30.00,0.00)"});
}

TEST(Checks, FindingsAreListedUpToANumberAndCounted) {
  const BoundedFindings findings = CheckPlan(std::vector<kovltype>(6001), std::vector<int>(6001));
  EXPECT_EQ(findings.listed.size(), BoundedFindings::kMost);
  EXPECT_EQ(findings.left_out, 2000);
  EXPECT_EQ(findings.Count(), 12000);
}

}  // namespace
}  // namespace velmora
