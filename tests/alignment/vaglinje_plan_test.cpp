#include <gtest/gtest.h>

#include "tests/alignment/shapes.h"
#include "tests/support/recorded_messages.h"

namespace velmora {
namespace {

constexpr char kEast[] = "0 0 0 0; 0 100 0 100";

TEST(VaglinjePlan, OffsetIsPositiveToTheRight) {
  CVaglinje line;
  AddPoints(&line, kEast);
  double x = 0, y = 0, sek = 0, avst = 0;
  ASSERT_EQ(line.Vag2xy(50, 5, &x, &y), 0);
  EXPECT_NEAR(x, -5, 1e-9);
  EXPECT_NEAR(y, 50, 1e-9);
  for (const int lage : {0, 2}) {
    ASSERT_EQ(line.Vagstv(-5, 50, &sek, &avst, lage), 0) << lage;
    EXPECT_NEAR(sek, 50, 1e-9);
    EXPECT_NEAR(avst, 5, 1e-9);
  }
}

TEST(VaglinjePlan, StationsHoldToATenthOfAMillimetre) {
  struct Case {
    const char* shape;
    double sek;
    int result;
  };
  const Case kCases[] = {
      {kEast, -0.00005, 0},
      {kEast, -0.001, -1},
      {kEast, 100.00005, 0},
      {kEast, 100.001, -1},
      {"0 0 0 0", 0, -1},
      {"", 0, -1},
      {"0 0 0 9; 0 9 0 0", 9.00005, 0},
      {"0 0 0 9; 0 9 0 0", 9.001, -1},
      {"0 0 0 9; 0 9 0 0", -0.00005, 0},
      {"0 0 0 9; 0 9 0 0", -0.001, -1},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(testing::Message() << c.shape << " at " << c.sek);
    CVaglinje line;
    AddPoints(&line, c.shape);
    double x = 1, y = 2;
    EXPECT_EQ(line.Vag2xy(c.sek, 0, &x, &y), c.result);
    const double expected = c.result < 0 ? 999999.9 : c.shape == kEast ? c.sek : 9 - c.sek;
    EXPECT_NEAR(y, expected, 1e-9);
    EXPECT_NEAR(x, c.result < 0 ? 999999.9 : 0, 1e-9);
  }
}

TEST(VaglinjePlan, PositionIsProportionalToStation) {
  CVaglinje line;
  AddPoints(&line, "0 0 0 1000; 0 100 0 1010");
  double x = 0, y = 0;
  ASSERT_EQ(line.Vag2xy(1004, 0, &x, &y), 0);
  EXPECT_NEAR(y, 40, 1e-9);
}

// Search mode 1 goes on from where its guess from both ends left the current point and the mark. Callers
// rely on what that finds, and on what it misses.
TEST(VaglinjePlan, TheNarrowedSearchMissesASingleSegment) {
  CVaglinje line;
  AddPoints(&line, kEast);
  double sek = 0, avst = 0;
  EXPECT_EQ(line.Vagstv(-5, 50, &sek, &avst, 1), -1);
  EXPECT_EQ(sek, CVaglinje::Seknoll);
}

struct FindCase {
  const char* why;
  const char* shape;
  double x, y;
  int lage;
  int result;
  double sek, avst;
};
TEST(VaglinjePlan, FindsTheNearestFootElseAnInnerVertex) {
  // A corner to the right at (0, 100).
  constexpr char kCorner[] = "0 0 0 0; 0 100 0 100; -100 100 0 200";
  // A lens: straight out 10 m south of the middle, straight back 10 m north of it.
  constexpr char kHairpin[] = "-10 0 0 0; -10 100 0 100; 10 100 0 120; 10 0 0 220";
  const FindCase kCases[] = {
      {"beyond the last point", kEast, 3, 101, 0, -1, CVaglinje::Seknoll, 0},
      {"before the first point", kEast, 3, -1, 0, -1, CVaglinje::Seknoll, 0},
      {"outside a corner", kCorner, 3, 104, 0, 0, 100, -5},
      {"outside a corner, vertices not searched", kCorner, 3, 104, 2, -1, CVaglinje::Seknoll, 0},
      {"inside a corner: the nearer leg", kCorner, -20, 97, 0, 0, 120, 3},
      {"of equal offsets the earlier segment", kHairpin, 0, 50, 0, 0, 50, -10},
      {"no alignment", "", 0, 0, 0, -1, CVaglinje::Seknoll, 0},
      {"a single point", "0 0 0 0", 0, 0, 0, -1, CVaglinje::Seknoll, 0},
      {"the vertex keeps its sign where stations fall", "0 0 0 200; 0 100 0 100; -100 100 0 0", 3, 104, 0, 0,
       100, -5},
      {"a segment of no length", "0 0 0 0; 0 0 0 0; 0 100 0 100", -5, 50, 0, 0, 50, 5},
  };
  for (const FindCase& c : kCases) {
    SCOPED_TRACE(c.why);
    CVaglinje line;
    AddPoints(&line, c.shape);
    double sek = 1, avst = 2;
    EXPECT_EQ(line.Vagstv(c.x, c.y, &sek, &avst, c.lage), c.result);
    EXPECT_NEAR(sek, c.sek, 1e-9);
    EXPECT_NEAR(avst, c.avst, 1e-9);
  }
}

TEST(VaglinjePlan, AProfileIsRefusedAndOutputsStay) {
  CVaglinje line;
  AddPoints(&line, kEast);
  line.typ = 10;
  double a = 1, b = 2, c = 3;
  kovltype p{}, q{0, 1, 1, 1};
  EXPECT_EQ(line.Vag2xy(50, 0, &a, &b), -1);
  EXPECT_EQ(line.Vagstv(0, 50, &a, &b, 0), -1);
  EXPECT_EQ(line.Pldist(0, 0, 9, 0, 1, 1, &a, &b), -1);
  EXPECT_EQ(line.Padist(&q, &p, 1, 1, &a, &b), -1);
  EXPECT_EQ(line.Extend(1, 1), -1);
  EXPECT_EQ(line.PktIomr(0, 50, &a, &b, 0), -1);
  EXPECT_EQ(line.Vagnu(&a, &b, &c), -1);
  EXPECT_EQ(line.SektBerak(0), -1);
  EXPECT_EQ(line.SektKorr(0, 0, 5), -1);
  EXPECT_TRUE(a == 1 && b == 2 && c == 3);
  EXPECT_EQ(PointsOf(line).size(), 2u);
  line.typ = 7;  // neither a plan nor a profile: both run
  EXPECT_EQ(line.Vag2xy(50, 0, &a, &b), 0);
  EXPECT_EQ(line.Vagprofz(50, &a), 0);
}

TEST(VaglinjePlan, AnImpossibleRadiusIsReportedAndCleared) {
  const RecordedMessages messages;
  CVaglinje line;
  line.typ = 10;  // runs for profiles too
  kokotype a{0, 0, 0.5}, b{30, 0, 0};
  double radius = 10, k1 = 7, k2 = 8;
  EXPECT_EQ(line.Bulge_r(&a, &b, &radius, &k1, &k2, 0), 0);
  EXPECT_EQ(a.bulge, 0.0);
  EXPECT_TRUE(radius == 10 && k1 == 7 && k2 == 8);
  ASSERT_EQ(messages.status.size(), 1u);
  EXPECT_EQ(messages.status[0], L"Fel (bulge->radie) radie: 10.00 (0.00,0.00 - 30.00,0.00)");

  radius = 17;
  EXPECT_EQ(line.Bulge_r(&a, &b, &radius, &k1, &k2, 0), 0);
  EXPECT_NEAR(a.bulge, -2 * (17 - 8) / 30.0, 1e-12);
  radius = 0;
  EXPECT_EQ(line.Bulge_r(&a, &b, &radius, &k1, &k2, 1), 0);
  EXPECT_NEAR(radius, 17, 1e-9);
  EXPECT_NEAR(k1, 15, 1e-9);
  EXPECT_NEAR(k2, -8, 1e-9);  // clockwise: the centre to the right
  EXPECT_EQ(messages.status.size(), 1u);
}

// New end points are measured from half a metre into the alignment, and their stations are not.
TEST(VaglinjePlan, ExtendStartsHalfAMetreIntoTheLine) {
  CVaglinje line;
  AddPoints(&line, "0 0 0.3 0; 0 100 0 100");
  line.Home();
  line.pael->bulge = 0;
  line.End();
  line.pael->bulge = 0.5;
  ASSERT_EQ(line.Extend(10, 20), 0);
  const std::vector<kovltype> p = PointsOf(line);
  ASSERT_EQ(p.size(), 4u);
  EXPECT_NEAR(p[0].y, -9.5, 1e-9);
  EXPECT_EQ(p[0].sek, -10.0);
  EXPECT_EQ(p[0].bulge, 0.0);
  EXPECT_EQ(p[2].bulge, 0.0);
  EXPECT_NEAR(p[3].y, 119.5, 1e-9);
  EXPECT_EQ(p[3].sek, 120.0);
  EXPECT_EQ(p[3].bulge, 0.0);
}

TEST(VaglinjePlan, ExtendRefusesWhatHasNoDirection) {
  for (const char* shape : {"", "0 0 0 0", "0 0 0 9; 0 9 0 0", "5 5 0 0; 5 5 0 9"}) {
    SCOPED_TRACE(shape);
    CVaglinje line;
    AddPoints(&line, shape);
    const size_t before = PointsOf(line).size();
    EXPECT_EQ(line.Extend(1, 0), -1);
    EXPECT_EQ(line.Extend(0, 1), -1);
    EXPECT_EQ(line.Extend(0, 0), 0);
    EXPECT_EQ(PointsOf(line).size(), before);
  }
}

TEST(VaglinjePlan, TheWorkingAreaHoldsAMillimetreOfStation) {
  CVaglinje line;
  AddPoints(&line, kEast);
  line.omrSekMin = 20;
  line.omrSekMax = 40;
  line.omrAvstMin = -3;
  line.omrAvstMax = 5;
  struct Case {
    double x, y;
    int result;
  };
  const Case kCases[] = {{-5, 30, 0},     {-5.001, 30, -1}, {3, 30, 0},      {3.001, 30, -1}, {0, 19.9995, 0},
                         {0, 19.998, -1}, {0, 40.0005, 0},  {0, 40.002, -1}, {0, 200, -1}};
  for (const Case& c : kCases) {
    double sek = 7, avst = 8;
    EXPECT_EQ(line.PktIomr(c.x, c.y, &sek, &avst, 0), c.result) << c.x << " " << c.y;
    EXPECT_NEAR(sek, c.result == 0 ? c.y : 7, 1e-9);
    EXPECT_NEAR(avst, c.result == 0 ? -c.x : 8, 1e-9);
    EXPECT_EQ(line.PktIomr(c.x, c.y, nullptr, nullptr, 0), c.result);
  }
}

TEST(VaglinjePlan, FallingStationsAdmitNothing) {
  CVaglinje line;
  AddPoints(&line, "0 0 0 100; 0 100 0 0");
  ASSERT_EQ(line.Reset(), 0);
  EXPECT_EQ(line.omrSekMin, 100.0);
  EXPECT_EQ(line.omrSekMax, 0.0);
  for (double y = 0; y <= 100; y += 10) EXPECT_EQ(line.PktIomr(0, y, nullptr, nullptr, 0), -1) << y;
}

TEST(VaglinjePlan, VagnuTellsTheCurrentPoint) {
  CVaglinje line;
  double x = 1, y = 2, sek = 3;
  EXPECT_EQ(line.Vagnu(&x, &y, &sek), -1);
  AddPoints(&line, "1 2 0 10; 3 4 0 20; 5 6 0 30");
  ASSERT_EQ(line.Vag2xy(15, 0, &x, &y), 0);
  ASSERT_EQ(line.Vagnu(&x, &y, &sek), 0);
  EXPECT_TRUE(x == 3 && y == 4 && sek == 20);
}

}  // namespace
}  // namespace velmora
