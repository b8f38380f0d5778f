// Every computation beside a second, long-hand one, bit for bit; and placing points along alignments
// and finding them again.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "tests/alignment/plain_alignment.h"
#include "tests/alignment/shapes.h"
#include "velmora/alignment/geometry.h"

namespace velmora {
namespace {

constexpr double kPiExact = 3.14159265358979323846;

bool SameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
         (std::isnan(a) && std::isnan(b));
}

double AnyBulge(std::mt19937& random) {
  switch (random() % 8) {
    case 0:
    case 1:
    case 2:
      return 0;
    case 3:
      return random() % 2 == 0 ? 1e-6 : -1.0001e-6;
    case 4:
      return Uniform(random, -3, 3);  // over half circles too
    default:
      return Uniform(random, -0.9, 0.9);
  }
}

// Half of them on whole metres, so that axes through arc centres and equal distances come up.
std::vector<kovltype> AnyAlignment(std::mt19937& random, bool descending) {
  std::vector<kovltype> points(1 + random() % 7);
  const bool whole = random() % 2 == 0;
  const auto coordinate = [&] {
    return whole ? static_cast<double>(random() % 9) : Uniform(random, -50, 50);
  };
  double station = Uniform(random, -100, 100);
  for (size_t i = 0; i < points.size(); ++i) {
    kovltype& p = points[i];
    do {
      p.x = coordinate();
      p.y = coordinate();
    } while (i > 0 && std::hypot(p.x - points[i - 1].x, p.y - points[i - 1].y) < 0.5);
    p.bulge = AnyBulge(random);
    if (whole && p.bulge != 0 && random() % 2 == 0) p.bulge = p.bulge < 0 ? -1 : 1;
    p.sek = station;
    const double step = whole ? static_cast<double>(1 + random() % 9) : Uniform(random, 0.2, 60);
    // The first two stations tell the direction; now and then a later one disagrees.
    const bool back = i > 0 && random() % 16 == 0;
    station += descending != back ? -step : step;
  }
  return points;
}

TEST(SideBySide, MapPointsAndStations) {
  std::mt19937 random(5);
  int found = 0, vertices = 0;
  for (int round = 0; round < 20000; ++round) {
    const std::vector<kovltype> points = AnyAlignment(random, round % 3 == 0);
    OpenLine line(points);
    PlainAlignment plain(points);
    const auto expect_same_cursors = [&] {
      EXPECT_EQ(line.CurrentIndex(), plain.current);
      EXPECT_EQ(line.MarkIndex(), plain.mark);
      EXPECT_EQ(line.Where(), plain.current + 1);
    };

    const bool whole = points[0].x == std::floor(points[0].x);
    double sek = Uniform(random, points.front().sek - 1, points.back().sek + 1);
    if (round % 5 == 0) sek = points[random() % points.size()].sek + Uniform(random, -0.00015, 0.00015);
    const double avst = Uniform(random, -20, 20);
    SCOPED_TRACE(testing::Message() << "round " << round << ", station " << sek << ", offset " << avst);
    double x = 1, y = 2, plain_x = 3, plain_y = 4;
    ASSERT_EQ(line.Vag2xy(sek, avst, &x, &y), plain.Vag2xy(sek, avst, &plain_x, &plain_y));
    ASSERT_TRUE(SameBits(x, plain_x)) << x << " " << plain_x;
    ASSERT_TRUE(SameBits(y, plain_y)) << y << " " << plain_y;
    expect_same_cursors();

    x = whole ? static_cast<double>(random() % 9) : Uniform(random, -60, 60);
    y = whole ? static_cast<double>(random() % 9) : Uniform(random, -60, 60);
    for (const int lage : {0, 1, 2, -1}) {
      SCOPED_TRACE(testing::Message() << "x " << x << ", y " << y << ", lage " << lage);
      double avst2 = 0, plain_sek = 0, plain_avst = 0;
      const int result = line.Vagstv(x, y, &sek, &avst2, lage);
      ASSERT_EQ(result, plain.Vagstv(x, y, &plain_sek, &plain_avst, lage));
      ASSERT_TRUE(SameBits(sek, plain_sek)) << sek << " " << plain_sek;
      ASSERT_TRUE(SameBits(avst2, plain_avst)) << avst2 << " " << plain_avst;
      expect_same_cursors();
      found += result == 0;
      for (const kovltype& p : points) vertices += result == 0 && sek == p.sek;
    }
    if (testing::Test::HasFailure()) return;
  }
  EXPECT_GT(found, 20000);
  EXPECT_GT(vertices, 2000);
}

TEST(SideBySide, FeetOnStraightsAndArcs) {
  std::mt19937 random(6);
  CVaglinje line;
  int inside = 0;
  for (int round = 0; round < 40000; ++round) {
    std::vector<kovltype> ends = AnyAlignment(random, false);
    if (ends.size() < 2) continue;
    kovltype &a = ends[0], &b = ends[1];
    // The point itself, its ends, and points straight above, below and beside the arc's centre.
    kovltype p = round % 4 == 0   ? a
                 : round % 4 == 1 ? b
                                  : kovltype{Uniform(random, -9, 9), Uniform(random, -9, 9), 0, 0};
    if (round % 8 == 7) {
      const Arc arc = ArcFromBulge(InPlane(a), InPlane(b), a.bulge == 0 ? 1 : a.bulge);
      const double near = Uniform(random, -2e-5, 2e-5), far = Uniform(random, -9, 9);
      const bool turned = random() % 2 == 0;
      p.x = arc.centre.v + (turned ? near : far);
      p.y = arc.centre.h + (turned ? far : near);
    }
    double avst = -7, langs = -8, plain_avst = -7, plain_langs = -8;
    int result = line.Pldist(a.y, a.x, b.y, b.x, p.y, p.x, &avst, &langs);
    ASSERT_EQ(result, PlainAlignment::Pldist(a.y, a.x, b.y, b.x, p.y, p.x, &plain_avst, &plain_langs));
    ASSERT_TRUE(SameBits(avst, plain_avst) && SameBits(langs, plain_langs));
    if (std::fabs(a.bulge) <= 1e-6) continue;
    result = line.Padist(&a, &b, p.x, p.y, &langs, &avst);
    ASSERT_EQ(result, PlainAlignment::Padist(a, b, p.x, p.y, &plain_langs, &plain_avst));
    ASSERT_TRUE(SameBits(avst, plain_avst) && SameBits(langs, plain_langs));
    inside += result == 1;
  }
  EXPECT_GT(inside, 5000);
}

TEST(SideBySide, LevelsAndStationsFromGeometry) {
  std::mt19937 random(8);
  int levels = 0;
  for (int round = 0; round < 20000; ++round) {
    std::vector<kovltype> points = AnyAlignment(random, false);
    OpenLine line(points);
    PlainAlignment plain(points);
    ASSERT_EQ(line.SektBerak(1000), plain.SektBerak(1000));
    const std::vector<kovltype> stationed = PointsOf(line);
    for (size_t i = 0; i < points.size(); ++i) ASSERT_TRUE(SameBits(stationed[i].sek, plain.p[i].sek)) << i;

    std::sort(points.begin(), points.end(), [](const kovltype& a, const kovltype& b) { return a.y < b.y; });
    for (kovltype& p : points) p.sek = p.y;
    OpenLine profile(points);
    PlainAlignment plain_profile(points);
    const double at = round % 4 == 0 ? points[random() % points.size()].y
                                     : Uniform(random, points.front().y - 1, points.back().y + 1);
    double z = 0, plain_z = 0;
    const int result = profile.Vagprofz(at, &z);
    ASSERT_EQ(result, plain_profile.Vagprofz(at, &plain_z));
    ASSERT_TRUE(SameBits(z, plain_z)) << z << " " << plain_z;
    EXPECT_EQ(profile.CurrentIndex(), plain_profile.current);
    levels += result == 0;
  }
  EXPECT_GT(levels, 5000);
}

// --- place, then locate

// Straights and arcs below half circles, tangent or with a corner, heading east within 80 degrees to
// either side so that no part comes near another; stations are true lengths.
std::vector<kovltype> Road(std::mt19937& random, size_t segments, double largest_sweep) {
  std::vector<kovltype> points = {
      {Uniform(random, 6e6, 7e6), Uniform(random, 1e5, 2e5), 0, Uniform(random, 0, 5000)}};
  constexpr double kSteepest = 80 * kPiExact / 180;
  const auto turned = [&](double heading, double most) {
    return std::clamp(heading + Uniform(random, -most, most), -kSteepest, kSteepest);
  };
  double heading = Uniform(random, -1, 1);  // counter-clockwise from east
  for (size_t i = 0; i < segments; ++i) {
    if (random() % 2 == 0) heading = turned(heading, 50 * kPiExact / 180);
    const double leaving = random() % 2 == 0 ? heading : turned(heading, largest_sweep);
    const double sweep = leaving - heading;
    kovltype& a = points.back();
    double chord = Uniform(random, 60, 200), length = chord;
    if (std::fabs(sweep) > 1e-3) {
      const double radius = Uniform(random, 80, 400);
      a.bulge = std::tan(sweep / 4);
      chord = 2 * radius * std::sin(std::fabs(sweep) / 2);
      length = radius * std::fabs(sweep);
    }
    const double along = heading + sweep / 2;
    points.push_back({a.x + chord * std::sin(along), a.y + chord * std::cos(along), 0, a.sek + length});
    heading = leaving;
  }
  return points;
}

// Within this of an axis through an arc's centre its quadrants jump.
bool NearAnAxis(const kovltype& a, const kovltype& b, PlanePoint p) {
  if (IsStraight(a.bulge)) return false;
  const PlanePoint c = ArcFromBulge(InPlane(a), InPlane(b), a.bulge).centre;
  const auto near = [&](PlanePoint q) { return std::fabs(q.h - c.h) < 1e-4 || std::fabs(q.v - c.v) < 1e-4; };
  return near(p) || near(InPlane(a)) || near(InPlane(b));
}

void ExpectRoundTrip(OpenLine& line, const kovltype& a, const kovltype& b, double sek, double avst) {
  constexpr double kTolerance = 1e-6;  // m
  double x = 0, y = 0, found_sek = 0, found_avst = 0;
  ASSERT_EQ(line.Vag2xy(sek, avst, &x, &y), 0);
  if (NearAnAxis(a, b, {y, x})) return;
  ASSERT_EQ(line.Vagstv(x, y, &found_sek, &found_avst, 0), 0);
  EXPECT_NEAR(found_sek, sek, kTolerance);
  EXPECT_NEAR(found_avst, avst, kTolerance);
}

TEST(RoundTrip, PointsAlongARoadAreFoundWhereTheyWerePut) {
  std::mt19937 random(21);
  for (int round = 0; round < 3000; ++round) {
    SCOPED_TRACE(testing::Message() << "round " << round);
    const std::vector<kovltype> points = Road(random, 1 + random() % 5, 60 * kPiExact / 180);
    OpenLine line(points);
    const size_t i = random() % (points.size() - 1);
    const kovltype &a = points[i], &b = points[i + 1];
    if (b.sek - a.sek < 45) continue;
    ExpectRoundTrip(line, a, b, Uniform(random, a.sek + 20, b.sek - 20), Uniform(random, -8, 8));
    if (testing::Test::HasFailure()) return;
  }
}

TEST(RoundTrip, AnySingleArcUpToItsCentre) {
  std::mt19937 random(22);
  for (int round = 0; round < 3000; ++round) {
    SCOPED_TRACE(testing::Message() << "round " << round);
    kovltype a{Uniform(random, -500, 500), Uniform(random, -500, 500), Uniform(random, -0.95, 0.95), 100};
    const double direction = Uniform(random, 0, 2 * kPiExact), chord = Uniform(random, 5, 300);
    const double sweep = 4 * std::atan(std::fabs(a.bulge));
    if (sweep < 0.01) continue;
    const double radius = chord / 2 / std::sin(sweep / 2);
    kovltype b{a.x + chord * std::sin(direction), a.y + chord * std::cos(direction), 0,
               a.sek + radius * sweep};
    OpenLine line({a, b});
    ExpectRoundTrip(line, a, b, Uniform(random, a.sek + 1e-3, b.sek - 1e-3),
                    Uniform(random, -0.9, 0.9) * std::min(radius, 1e4));
    if (testing::Test::HasFailure()) return;
  }
}

// Vag2xy never turns the offset's sign and Vagstv does where stations fall.
TEST(RoundTrip, DescendingRoundTripTurnsOffset) {
  for (const char* shape : {"0 0 0 100; 0 100 0 0", "0 0 0.3 200; 50 100 0 60"}) {
    SCOPED_TRACE(shape);
    CVaglinje line;
    AddPoints(&line, shape);
    const double length = [&] {
      const std::vector<kovltype> p = Points(shape);
      const double chord = std::hypot(p[1].x - p[0].x, p[1].y - p[0].y), sweep = 4 * std::atan(p[0].bulge);
      return sweep == 0 ? chord : chord / 2 / std::sin(sweep / 2) * sweep;
    }();
    std::vector<kovltype> p = PointsOf(line);
    line.End();
    line.pael->sek = p[0].sek - length;
    double x = 0, y = 0, sek = 0, avst = 0;
    ASSERT_EQ(line.Vag2xy(p[0].sek - 30, 4, &x, &y), 0);
    ASSERT_EQ(line.Vagstv(x, y, &sek, &avst, 0), 0);
    EXPECT_NEAR(sek, p[0].sek - 30, 1e-6);
    EXPECT_NEAR(avst, -4, 1e-6);
  }
}

}  // namespace
}  // namespace velmora
