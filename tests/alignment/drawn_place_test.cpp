#include "velmora/alignment/drawn_place.h"

#include <gtest/gtest.h>

#include "tests/alignment/shapes.h"
#include "velmora/alignment/measures.h"
#include "velmora/locator/locator.h"

namespace velmora {
namespace {

using Road = std::vector<kovltype>;

kovltype Rotated(const kovltype& p) {
  const double c = std::cos(0.3), s = std::sin(0.3);
  return {s * p.y + c * p.x, c * p.y - s * p.x, p.bulge, p.sek};
}

// Straights, quarter, half and three-quarter circles along the axes, with corners; ends on the axes through
// the centres and close beside them.
Road AxisRoad(std::mt19937& random, int segments) {
  const double kBulges[] = {0, 0, 0.41421356, -0.41421356, 1, -1, 2.41421356, -2.41421356};
  Road road = {{0, 0, 0, 5000}};
  for (int i = 0; i < segments; ++i) {
    kovltype& a = road.back();
    a.bulge = kBulges[random() % 8];
    const double length = Uniform(random, 10, 80);
    const auto quarters =
        static_cast<double>(random() % 4) + (std::fabs(a.bulge) == 1 || a.bulge == 0 ? 0 : 0.5);
    const double beside = Uniform(random, -2e-5, 2e-5) * static_cast<double>(random() % 2);
    road.push_back({a.x + length * std::sin(quarters * kHalfPi) + beside,
                    a.y + length * std::cos(quarters * kHalfPi), 0, 0});
    road.back().sek = road[road.size() - 2].sek + SegmentLength(road[road.size() - 2], road.back());
  }
  return road;
}

// What Vagstv finds, corrected.
std::optional<LinePlace> PlaceOf(const Road& road, const kovltype& p, std::optional<LinePlace>* searched) {
  LinePlace at{};
  if (Locator(road, 1).Vagstv(p.x, p.y, &at.station, &at.offset) == 0) *searched = at;
  std::optional<LinePlace> place = *searched;
  const DrawnPlaces places(road);
  if (places.MayDiffer(InPlane(p))) places.Correct(InPlane(p), true, &place);
  return place;
}

// Places do not depend on the directions of the axes, and falling stations change the side alone; those that
// Vagstv finds differ.
TEST(DrawnPlaces, AreThoseOfTheRotatedRoad) {
  std::mt19937 random(5);
  int corrected = 0;
  int either_side = 0;  // where the line turns back
  for (int round = 0; round < 2000 && !HasFailure(); ++round) {
    const Road road = AxisRoad(random, round % 10 == 0 ? 300 : 8);
    Road turned, falling;
    for (const kovltype& point : road) {
      turned.push_back(Rotated(point));
      falling.push_back({point.x, point.y, point.bulge, -point.sek});
    }
    const size_t segment = round % 10 == 0 ? 0 : random() % 8;
    const PlanePoint axis =
        IsStraight(road[segment].bulge)
            ? PlanePoint{}
            : ArcFromBulge(InPlane(road[segment]), InPlane(road[segment + 1]), road[segment].bulge).centre;
    kovltype p{Uniform(random, -60, 60) + road[segment].x, Uniform(random, -60, 60) + road[segment].y, 0, 0};
    if (round % 5 == 0) p.y = axis.h + Uniform(random, -2e-5, 2e-5);
    std::optional<LinePlace> searched, ignored;
    const auto place = PlaceOf(road, p, &searched);
    const auto expected = PlaceOf(turned, Rotated(p), &ignored);
    const auto reversed = PlaceOf(falling, p, &ignored);
    ASSERT_EQ(place.has_value(), expected.has_value()) << round;
    ASSERT_EQ(place.has_value(), reversed.has_value()) << round;
    if (!place) continue;
    EXPECT_NEAR(place->station, expected->station, 1e-4) << round;
    EXPECT_NEAR(std::fabs(place->offset), std::fabs(expected->offset), 1e-4) << round;
    EXPECT_NEAR(reversed->station, -place->station, 1e-4) << round;
    EXPECT_NEAR(reversed->offset, -place->offset, 1e-4) << round;
    either_side += place->offset * expected->offset < 0;
    corrected += !searched || std::fabs(searched->station - place->station) > 1 ||
                 searched->offset * place->offset < 0;
  }
  EXPECT_GT(corrected, 250);
  EXPECT_LT(either_side, 5);
}

}  // namespace
}  // namespace velmora
