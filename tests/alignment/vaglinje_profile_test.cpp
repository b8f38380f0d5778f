#include <gtest/gtest.h>

#include <cmath>

#include "tests/alignment/shapes.h"

namespace velmora {
namespace {

struct LevelCase {
  double sek;
  int result;
  double level;
};
TEST(VaglinjeProfile, LevelsFromTheFirstPointUpToBeforeTheLast) {
  CVaglinje profile;
  profile.typ = 10;
  AddPoints(&profile, "10 100 0 100; 20 200 0 200; 15 300 0 300");
  const LevelCase kCases[] = {{99.999, -1, 999999.9}, {100, 0, 10},        {150, 0, 15},       {200, 0, 20},
                              {250, 0, 17.5},         {300, -1, 999999.9}, {301, -1, 999999.9}};
  for (const LevelCase& c : kCases) {
    double z = 0;
    EXPECT_EQ(profile.Vagprofz(c.sek, &z), c.result) << c.sek;
    EXPECT_NEAR(z, c.level, 1e-9) << c.sek;
  }
  double z = 0;
  profile.typ = 1;
  EXPECT_EQ(profile.Vagprofz(150, &z), -1);
  EXPECT_EQ(z, 999999.9);
  profile.typ = 0;
  EXPECT_EQ(profile.Vagprofz(150, &z), 0);
  CVaglinje single;
  EXPECT_EQ(single.Vagprofz(0, &z), -1);
  AddPoints(&single, "10 100 0 100");
  EXPECT_EQ(single.Vagprofz(100, &z), -1);
}

// A crest of radius 125 over 150 m, levels 0 at both ends: clockwise, so its bulge is negative.
TEST(VaglinjeProfile, AVerticalCurveRisesToItsSagitta) {
  const double sweep = 2 * std::asin(75.0 / 125);
  std::vector<kovltype> points = {{0, 0, -std::tan(sweep / 4), 0}, {0, 150, 0, 150}};
  for (const double sign : {1.0, -1.0}) {
    OpenLine profile(points);
    profile.typ = 10;
    profile.Home();
    profile.pael->bulge *= sign;
    double z = 0;
    ASSERT_EQ(profile.Vagprofz(75, &z), 0);
    EXPECT_NEAR(z, sign * 25, 1e-9);
    ASSERT_EQ(profile.Vagprofz(0, &z), 0);
    EXPECT_NEAR(z, 0, 1e-9);
  }
}

TEST(VaglinjeProfile, StationsFromStraightLegs) {
  CVaglinje line;
  EXPECT_EQ(line.SektBerak(1000), 0);
  AddPoints(&line, "0 0 0 7; 0 30 0 7; 40 30 0 7");
  ASSERT_EQ(line.SektBerak(1000), 0);
  const std::vector<kovltype> p = PointsOf(line);
  EXPECT_NEAR(p[0].sek, 1000, 1e-9);
  EXPECT_NEAR(p[1].sek, 1030, 1e-9);
  EXPECT_NEAR(p[2].sek, 1070, 1e-9);
}

// Each segment is taken by the bulge of the point it leads to, not of the one it starts at.
TEST(VaglinjeProfile, StationsFollowTheLaterBulge) {
  const double half_circle = 1;
  OpenLine line({{0, 0, half_circle, 0}, {6, 8, 0, 0}, {12, 16, half_circle, 0}, {12, 16, half_circle, 0}});
  ASSERT_EQ(line.SektBerak(0), 0);
  const std::vector<kovltype> p = PointsOf(line);
  EXPECT_NEAR(p[1].sek, 10, 1e-9);
  EXPECT_NEAR(p[2].sek, 10 + 5 * std::acos(-1.0), 1e-9);
  EXPECT_EQ(p[3].sek, p[2].sek);  // no arc between coincident points
}

TEST(VaglinjeProfile, StationsShiftToTheLastPointAtAPlace) {
  CVaglinje line;
  EXPECT_EQ(line.SektKorr(0, 0, 0), -1);
  AddPoints(&line, "0 0 0 100; 0 30 0 130; 0 60 0 160; 0 30 0 190");
  EXPECT_EQ(line.SektKorr(0.002, 30, 500), -1);
  EXPECT_EQ(PointsOf(line)[0].sek, 100.0);
  ASSERT_EQ(line.SektKorr(0, 30.0009, 500), 0);
  const std::vector<kovltype> p = PointsOf(line);
  EXPECT_NEAR(p[0].sek, 410, 1e-9);
  EXPECT_NEAR(p[3].sek, 500, 1e-9);
}

}  // namespace
}  // namespace velmora
