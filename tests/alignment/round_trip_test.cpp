// The look-ups beside a second, long-hand computation, bit for bit; and placing points along alignments
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

bool SameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
         (std::isnan(a) && std::isnan(b));
}

double AnyBulge(std::mt19937& random) {
  const double any = Uniform(random, -0.9, 0.9), over_half_circles = Uniform(random, -3, 3);
  const double kBulges[] = {0, 0, 0, any, any, any, 1, -1, over_half_circles, 1e-6, -1.0001e-6};
  return kBulges[random() % std::size(kBulges)];
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
      p = {coordinate(), coordinate(), AnyBulge(random), station};
    } while (i > 0 && std::hypot(p.x - points[i - 1].x, p.y - points[i - 1].y) < 0.5);
    const double step = whole ? static_cast<double>(1 + random() % 9) : Uniform(random, 0.2, 60);
    // The first two stations tell the direction; now and then a later one disagrees.
    const bool back = i > 0 && random() % 16 == 0;
    station += descending != back ? -step : step;
  }
  return points;
}

// A place to look up: now and then on whole metres, at a point or close by, and beside an axis through the
// centre of the first segment's arc.
PlanePoint AnyPlace(std::mt19937& random, const std::vector<kovltype>& points) {
  PlanePoint p{Uniform(random, -60, 60), Uniform(random, -60, 60)};
  if (random() % 4 == 0) p = {static_cast<double>(random() % 9), static_cast<double>(random() % 9)};
  if (random() % 4 == 0) p = InPlane(points[random() % points.size()]);
  if (random() % 8 == 0) p.h += Uniform(random, -0.015, 0.015);
  if (random() % 4 == 0 && points.size() > 1 && points[0].bulge != 0) {
    const PlanePoint centre = ArcFromBulge(InPlane(points[0]), InPlane(points[1]), points[0].bulge).centre;
    const double beside = Uniform(random, -2e-5, 2e-5);
    if (random() % 2 == 0)
      p.h = centre.h + beside;
    else
      p.v = centre.v + beside;
  }
  return p;
}

TEST(SideBySide, LookUpsAgreeToTheLastBit) {
  std::mt19937 random(5);
  int found = 0, on_arcs = 0;
  for (int round = 0; round < 40000; ++round) {
    const std::vector<kovltype> points = AnyAlignment(random, round % 3 == 0);
    OpenLine line(points);
    PlainAlignment plain{points};
    double sek = Uniform(random, points.front().sek - 1, points.back().sek + 1);
    if (round % 5 == 0) sek = points[random() % points.size()].sek + Uniform(random, -0.00015, 0.00015);
    double avst = Uniform(random, -20, 20), x = 1, y = 2, plain_x = 3, plain_y = 4;
    SCOPED_TRACE(testing::Message() << "round " << round << ", station " << sek << ", offset " << avst);
    EXPECT_EQ(line.Vag2xy(sek, avst, &x, &y), plain.Vag2xy(sek, avst, &plain_x, &plain_y));
    EXPECT_PRED2(SameBits, x, plain_x);
    EXPECT_PRED2(SameBits, y, plain_y);
    EXPECT_EQ(line.Cursors(), plain.Cursors());

    const PlanePoint p = AnyPlace(random, points);
    SCOPED_TRACE(testing::Message() << "x " << p.v << ", y " << p.h);
    double plain_sek = 0, plain_avst = 0;
    for (const int lage : {0, 1, 2, -1}) {
      SCOPED_TRACE(lage);
      const int result = line.Vagstv(p.v, p.h, &sek, &avst, lage);
      EXPECT_EQ(result, plain.Vagstv(p.v, p.h, &plain_sek, &plain_avst, lage));
      EXPECT_PRED2(SameBits, sek, plain_sek);
      EXPECT_PRED2(SameBits, avst, plain_avst);
      EXPECT_EQ(line.Cursors(), plain.Cursors());
      found += result == 0;
    }

    kovltype a = points.front(), b = points.back();
    avst = plain_avst = sek = plain_sek = -7;
    // Towards the place, which may be too close for a straight.
    EXPECT_EQ(line.Pldist(a.y, a.x, p.h, p.v, b.y, b.x, &avst, &sek),
              PlainAlignment::Pldist(a.y, a.x, p.h, p.v, b.y, b.x, &plain_avst, &plain_sek));
    if (!IsStraight(a.bulge)) {
      const int result = line.Padist(&a, &b, p.v, p.h, &sek, &avst);
      EXPECT_EQ(result, PlainAlignment::Padist(a, b, p.v, p.h, &plain_sek, &plain_avst));
      on_arcs += result == 1;
    }
    EXPECT_PRED2(SameBits, avst, plain_avst);
    EXPECT_PRED2(SameBits, sek, plain_sek);
    if (testing::Test::HasFailure()) return;
  }
  EXPECT_GT(found, 40000);
  EXPECT_GT(on_arcs, 5000);
}

// --- place, then locate

constexpr double kDegree = 3.14159265358979323846 / 180;

// Straights and arcs below half circles, tangent or with a corner, within 80 degrees to either side of one
// direction so that no part comes beside another; stations are true lengths.
std::vector<kovltype> Road(std::mt19937& random, size_t segments) {
  const auto turned = [&](double heading, double most) {
    return std::clamp(heading + Uniform(random, -most, most), -80 * kDegree, 80 * kDegree);
  };
  std::vector<kovltype> points = {
      {Uniform(random, 6e6, 7e6), Uniform(random, 1e5, 2e5), 0, Uniform(random, 0, 5000)}};
  const double direction = Uniform(random, 0, 360) * kDegree;  // counter-clockwise from east
  double heading = turned(0, 80 * kDegree);                    // from that direction
  for (size_t i = 0; i < segments; ++i) {
    if (random() % 2 == 0) heading = turned(heading, 50 * kDegree);
    const double leaving = random() % 2 == 0 ? heading : turned(heading, 160 * kDegree);
    const double sweep = leaving - heading;
    kovltype& a = points.back();
    double chord = Uniform(random, 60, 200), length = chord;
    if (std::fabs(sweep) > 1e-3) {
      const double radius = Uniform(random, 80, 400);
      a.bulge = std::tan(sweep / 4);
      chord = 2 * radius * std::sin(std::fabs(sweep) / 2);
      length = radius * std::fabs(sweep);
    }
    const double along = direction + heading + sweep / 2;
    points.push_back({a.x + chord * std::sin(along), a.y + chord * std::cos(along), 0, a.sek + length});
    heading = leaving;
  }
  return points;
}

// Points put along roads are found where they were put; their offsets times `sign`, which is also that of
// the direction in which stations run.
void ExpectRoundTrips(double sign) {
  constexpr double kTolerance = 1e-6;  // m
  std::mt19937 random(21);
  int found = 0;
  for (int round = 0; round < 5000; ++round) {
    SCOPED_TRACE(testing::Message() << "round " << round);
    std::vector<kovltype> points = Road(random, 1 + random() % 5);
    const size_t i = random() % (points.size() - 1);
    if (points[i + 1].sek - points[i].sek < 45) continue;
    const double sek = sign * Uniform(random, points[i].sek + 20, points[i + 1].sek - 20);
    const double widest = points.size() == 2 ? 70 : 8;  // to beside an arc's centre where nothing else lies
    const double avst = Uniform(random, -widest, widest);
    for (kovltype& p : points) p.sek *= sign;

    OpenLine line(points);
    double x = 0, y = 0, found_sek = 0, found_avst = 0;
    ASSERT_EQ(line.Vag2xy(sek, avst, &x, &y), 0);
    ASSERT_EQ(line.Vagstv(x, y, &found_sek, &found_avst, 0), 0);
    ASSERT_NEAR(found_sek, sek, kTolerance);
    ASSERT_NEAR(found_avst, sign * avst, kTolerance);
    ++found;
  }
  EXPECT_GT(found, 3000);
}

TEST(RoundTrip, PointsAlongARoadAreFoundWhereTheyWerePut) { ExpectRoundTrips(1); }

// Vag2xy never turns the offset's sign and Vagstv does where stations fall.
TEST(RoundTrip, DescendingRoundTripTurnsOffset) { ExpectRoundTrips(-1); }

}  // namespace
}  // namespace velmora
