#include <gtest/gtest.h>

#include "tests/alignment/shapes.h"

namespace velmora {
namespace {

const std::vector<kovltype> kEast = {{0, 0, 0, 0}, {0, 100, 0, 100}};

TEST(VaglinjePlan, OffsetIsPositiveToTheRight) {
  OpenLine line(kEast);
  double x = 0, y = 0, sek = 0, avst = 0;
  ASSERT_EQ(line.Vag2xy(50, 5, &x, &y), 0);
  EXPECT_TRUE(Near({x, y}, {-5, 50}));
  ASSERT_EQ(line.Vagstv(-5, 50, &sek, &avst, 0), 0);
  EXPECT_TRUE(Near({sek, avst}, {50, 5}));
  ASSERT_EQ(line.Vagnu(&x, &y, &sek), 0);
  EXPECT_TRUE(Near({x, y, sek}, {0, 100, 100}));
}

TEST(VaglinjePlan, OutsideACornerItsVertexIsFound) {
  OpenLine line({{0, 0, 0, 0}, {0, 100, 0, 100}, {-100, 100, 0, 200}});
  double sek = 1, avst = 2;
  EXPECT_EQ(line.Vagstv(3, 104, &sek, &avst, 0), 0);
  EXPECT_TRUE(Near({sek, avst}, {100, -5}));
  EXPECT_EQ(line.Vagstv(3, 104, &sek, &avst, 2), -1);  // without the vertices
  EXPECT_TRUE(Near({sek, avst}, {CVaglinje::Seknoll, 0}));
  EXPECT_EQ(OpenLine(kEast).Vagstv(-5, 50, &sek, &avst, 1), -1);  // callers rely on what narrowing misses
  EXPECT_EQ(OpenLine({}).Vagstv(-5, 50, &sek, &avst, 0), -1);
  EXPECT_EQ(OpenLine({}).Vag2xy(0, 0, &sek, &avst), -1);
}

TEST(VaglinjePlan, AProfileIsRefusedAndOutputsStay) {
  OpenLine line(kEast);
  line.typ = 10;
  double a = 1, b = 2, c = 3;
  kovltype p{}, q{0, 1, 1, 1};
  std::vector<int> results = {line.Vag2xy(50, 0, &a, &b), line.Vagstv(0, 50, &a, &b, 0)};
  results.push_back(line.Pldist(0, 0, 9, 0, 1, 1, &a, &b));
  results.push_back(line.Padist(&q, &p, 1, 1, &a, &b));
  results.push_back(line.PktIomr(0, 50, &a, &b, 0));
  results.push_back(line.Vagnu(&a, &b, &c));
  EXPECT_EQ(results, std::vector<int>(6, -1));
  EXPECT_TRUE(line.Extend(1, 1) == -1 && line.SektBerak(0) == -1 && line.SektKorr(0, 0, 5) == -1);
  EXPECT_TRUE(a == 1 && b == 2 && c == 3);
  EXPECT_EQ(PointsOf(line).size(), 2u);
  line.typ = 7;  // neither a plan nor a profile: both run
  EXPECT_TRUE(line.Vag2xy(50, 0, &a, &b) == 0 && line.Vagprofz(50, &a) == 0);
}

TEST(VaglinjePlan, AnImpossibleRadiusIsReportedAndCleared) {
  const RecordedMessages messages;
  CVaglinje line;
  line.typ = 10;  // runs for profiles too
  kokotype a{0, 0, 0.5}, b{30, 0, 0};
  double radius = 10, k1 = 7, k2 = 8;
  EXPECT_EQ(line.Bulge_r(&a, &b, &radius, &k1, &k2, 0), 0);
  EXPECT_TRUE(a.bulge == 0 && radius == 10 && k1 == 7 && k2 == 8);
  EXPECT_EQ(messages.status,
            std::vector<CString>{L"Fel (bulge->radie) radie: 10.00 (0.00,0.00 - 30.00,0.00)"});

  radius = 17;
  EXPECT_EQ(line.Bulge_r(&a, &b, &radius, &k1, &k2, 0), 0);
  EXPECT_NEAR(a.bulge, -2 * (17 - 8) / 30.0, 1e-12);
  EXPECT_EQ(line.Bulge_r(&a, &b, &radius, &k1, &k2, 1), 0);
  EXPECT_TRUE(Near({radius, k1, k2}, {17, 15, -8}));  // clockwise: the centre to the right
  // A negative radius adds the root of its square to itself and so gives the shorter arc, too.
  radius = -17;
  EXPECT_EQ(line.Bulge_r(&a, &b, &radius, &k1, &k2, 0), 0);
  EXPECT_NEAR(a.bulge, 2 * (17 - 8) / 30.0, 1e-12);
}

// New end points are measured from half a metre into the alignment, and their stations are not.
TEST(VaglinjePlan, ExtendStartsHalfAMetreIntoTheLine) {
  OpenLine line({{0, 0, 0, 0}, {0, 100, 0.5, 100}});
  ASSERT_EQ(line.Extend(10, 20), 0);
  const std::vector<kovltype> p = PointsOf(line);
  ASSERT_EQ(p.size(), 4u);
  EXPECT_TRUE(Near({p[0].y, p[0].sek, p[2].bulge, p[3].y, p[3].sek}, {-9.5, -10, 0, 119.5, 120}));
  const std::vector<kovltype> kWithoutDirection[] = {
      {}, {{0, 0, 0, 0}}, {{0, 0, 0, 9}, {0, 9, 0, 0}}, {{5, 5, 0, 0}, {5, 5, 0, 9}}};
  for (const std::vector<kovltype>& points : kWithoutDirection) {
    OpenLine refused(points);
    EXPECT_TRUE(refused.Extend(1, 0) == -1 && refused.Extend(0, 1) == -1);
    EXPECT_EQ(PointsOf(refused).size(), points.size());
  }
}

TEST(VaglinjePlan, TheWorkingAreaHoldsAMillimetreOfStation) {
  OpenLine line({{0, 0, 0, 0}, {0, 20, 0, 20}, {0, 40, 0, 40}, {0, 100, 0, 100}});
  line.Home();
  line++;
  ASSERT_EQ(line.Reset(), 0);
  EXPECT_EQ(line.Where(), 2);
  EXPECT_TRUE(line.omrSekMin == 0 && line.omrSekMax == 100 && line.omrAvstMin == -30);
  line.omrSekMin = 20;
  line.omrSekMax = 40;
  const struct {
    double x, y;
    int result;
  } kCases[] = {{-30, 30, 0},    {-30.001, 30, -1}, {30, 30, 0},     {30.001, 30, -1}, {0, 19.9995, 0},
                {0, 19.998, -1}, {0, 40.0005, 0},   {0, 40.002, -1}, {0, 200, -1}};
  for (const auto& [x, y, result] : kCases) {
    double sek = 7, avst = 8;
    EXPECT_EQ(line.PktIomr(x, y, &sek, &avst, 0), result) << x << " " << y;
    EXPECT_TRUE(Near({sek, avst}, {result == 0 ? y : 7, result == 0 ? -x : 8}));
  }
}

TEST(VaglinjePlan, FallingStationsAdmitNothing) {
  OpenLine line({{0, 0, 0, 100}, {0, 100, 0, 0}});
  ASSERT_EQ(line.Reset(), 0);
  for (double y = 0; y <= 100; y += 10) EXPECT_EQ(line.PktIomr(0, y, nullptr, nullptr, 0), -1) << y;
  line.Init(nullptr);
  EXPECT_EQ(line.Reset(), -1);
  EXPECT_TRUE(Near({line.omrSekMin, line.omrSekMax, line.omrAvstMin, line.omrAvstMax}, {0, 0, 0, 0}));
}

}  // namespace
}  // namespace velmora
