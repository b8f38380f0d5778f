#include <gtest/gtest.h>

#include <cmath>

#include "tests/alignment/shapes.h"

namespace velmora {
namespace {

TEST(VaglinjeProfile, LevelsFromTheFirstPointUpToBeforeTheLast) {
  // A crest of radius 125 over 150 m, clockwise; a straight; the same curve as a sag.
  const double sag = std::tan(std::asin(75.0 / 125) / 2);
  OpenLine profile({{10, 100, -sag, 100}, {10, 250, 0, 250}, {20, 350, sag, 350}, {20, 500, 0, 500}});
  const std::pair<double, double> kLevels[] = {{100, 10}, {175, 35}, {250, 10}, {275, 12.5}, {425, -5}};
  double z = 0;
  for (const int typ : {0, 10}) {
    profile.typ = typ;
    for (const auto& [sek, level] : kLevels) {
      EXPECT_EQ(profile.Vagprofz(sek, &z), 0) << sek;
      EXPECT_NEAR(z, level, 1e-9) << sek;
    }
    for (const double sek : {99.999, 500.0, 501.0}) {
      EXPECT_EQ(profile.Vagprofz(sek, &z), -1) << sek;
      EXPECT_EQ(z, 999999.9) << sek;
    }
  }
  profile.typ = 1;
  EXPECT_EQ(profile.Vagprofz(275, &z), -1);
  EXPECT_EQ(OpenLine({}).Vagprofz(0, &z), -1);
  EXPECT_EQ(OpenLine({{10, 100, 0, 100}}).Vagprofz(100, &z), -1);
}

// Each segment is taken by the bulge of the point it leads to, not of the one it starts at.
TEST(VaglinjeProfile, StationsFollowTheLaterBulge) {
  OpenLine line({{0, 0, 1, 7}, {6, 8, 0, 7}, {12, 16, 1, 7}, {6, 8, -1, 7}, {6, 8, -1, 7}});
  ASSERT_EQ(line.SektBerak(1000), 0);
  const std::vector<kovltype> p = PointsOf(line);
  const double half_circle = 5 * std::acos(-1.0);
  EXPECT_TRUE(Near({p[0].sek, p[1].sek, p[2].sek, p[3].sek},
                   {1000, 1010, 1010 + half_circle, 1010 + 2 * half_circle}));
  EXPECT_EQ(p[4].sek, p[3].sek);  // no arc between coincident points
  EXPECT_EQ(OpenLine({}).SektBerak(1000), 0);
}

TEST(VaglinjeProfile, StationsShiftToTheLastPointAtAPlace) {
  OpenLine line({{0, 0, 0, 100}, {0, 30, 0, 130}, {0, 60, 0, 160}, {0, 30, 0, 190}});
  EXPECT_EQ(line.SektKorr(0.002, 30, 500), -1);
  EXPECT_EQ(PointsOf(line)[0].sek, 100.0);
  ASSERT_EQ(line.SektKorr(0, 30.0009, 500), 0);
  EXPECT_TRUE(Near({PointsOf(line)[0].sek, PointsOf(line)[3].sek}, {410, 500}));
  EXPECT_EQ(OpenLine({}).SektKorr(0, 0, 0), -1);
}

}  // namespace
}  // namespace velmora
