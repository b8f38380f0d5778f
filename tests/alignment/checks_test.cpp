#include "velmora/alignment/checks.h"

#include <gtest/gtest.h>

#include "velmora/alignment/measures.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

std::string TextOf(const BoundedFindings& findings) {
  std::string text;
  for (const Finding& finding : findings.listed) {
    text += std::to_string(finding.line) + " " + finding.text + "\n";
    EXPECT_FALSE(finding.misread || finding.lost) << finding.text;
  }
  return text;
}

TEST(Checks, EveryFaultOfAPlanIsFound) {
  EXPECT_EQ(TextOf(CheckPlan({{0, 0, 0, 0}, {0, 100, 1, 100}, {0, 150, 0, 178.6}}, {1, 2, 3})), "");
  const std::vector<kovltype> plan = {{0, 0, 0, 0},       {0, 100, -1.5, 100}, {0, 200, 0, 90},
                                      {0, 200, 0.5, 190}, {0, 200, 0, 190},    {0, 300, 0, 290.2},
                                      {0, 400, 0, 390.1}};
  EXPECT_EQ(TextOf(CheckPlan(plan, {1, 3, 4, 5, 6, 7, 8})),
            "3 bulge -1.5000 is an arc of more than half a circle; computations take the shorter way round\n"
            "4 station 90.000 is out of order; the stations are ascending\n"
            "5 coincides with the previous point\n"
            "6 coincides with the previous point\n"
            "5 bulge 0.5000 between coincident points gives no arc\n"
            "6 station 190.000 repeats that of the previous point\n"
            "6 the segment is 100.200 m long by its stations, 100.000 m by its points\n");
  EXPECT_EQ(TextOf(CheckPlan({{0, 0, 0, 9}, {0, 9, 1e308, 0}, {0, 18, 0, 5}}, {1, 2, 3})),
            "2 bulge " + FormatFixed(1e308, 4) +
                " is an arc of more than half a circle; computations take the shorter way round\n"
                "3 station 5.000 is out of order; the stations are descending\n");
  EXPECT_EQ(TextOf(CheckPlan({{0, 0, 0, 0}}, {4})),
            "4 is the plan's only point; an alignment needs two or more\n");
}

TEST(Checks, EveryFaultOfAProfileIsFound) {
  EXPECT_EQ(TextOf(CheckProfile({{10, 100, 0, 100}, {11, 90, 0, 91}, {12, 90, 0, 90}, {9, 95, 0, 95}},
                                {2, 3, 5, 6})),
            "3 profile stations 90.000 and 91.000 differ; levels are looked up by both\n"
            "3 profile station 90.000 is not above the previous one\n"
            "5 profile station 90.000 is not above the previous one\n");
  EXPECT_EQ(TextOf(CheckProfile({{1, 2, 0, 2}}, {7})),
            "7 is the profile's only point; a profile needs two or more\n");
}

TEST(Checks, FindingsAreListedUpToANumberAndCounted) {
  const BoundedFindings findings = CheckPlan(std::vector<kovltype>(6001), std::vector<int>(6001));
  EXPECT_EQ(findings.listed.size(), BoundedFindings::kMost);
  EXPECT_EQ(findings.left_out, 2000);
  EXPECT_EQ(findings.Count(), 12000);
}

TEST(Checks, SwappedAxesAreNoticed) {
  const PlanBounds bounds{0, 3000, 50000, 51000};  // 3 km to every side
  const struct {
    double northing, easting;
    int near, near_swapped;
  } kCases[] = {{-3000, 54000, 1, 0}, {-3001, 50500, 0, 0}, {6000, 47000, 1, 0},
                {6001, 47000, 0, 0},  {1500, 46999, 0, 0},  {50500, 1500, 0, 1}};
  for (const auto& c : kCases) {
    AxisCheck check(bounds);
    check.Add(c.northing, c.easting);
    EXPECT_TRUE(check.Near() == c.near && check.NearSwapped() == c.near_swapped)
        << c.northing << " " << c.easting;
    EXPECT_EQ(check.LooksSwapped(), c.near_swapped == 1);
  }
  AxisCheck all({0, 10, 50000, 50010});  // 1 km to every side
  all.Add(-999, 50000);
  for (int i = 0; i < 5; ++i) {
    EXPECT_FALSE(all.LooksSwapped()) << i;
    AxisCheck one({0, 10, 50000, 50010});
    one.Add(50000, 0);
    all.Add(one);
  }
  EXPECT_TRUE(all.LooksSwapped());
}

}  // namespace
}  // namespace velmora
