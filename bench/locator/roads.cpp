#include "bench/locator/roads.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace velmora {
namespace {

constexpr double kRowDistance = 500;  // m
constexpr double kUsualLength = 30;

double Uniform(std::mt19937_64& random, double low, double high) {
  return low + (high - low) * static_cast<double>(random() >> 11) * 0x1p-53;
}

}  // namespace

std::vector<kovltype> MakeRoad(size_t vertices, bool arcs) {
  std::mt19937_64 random(1);
  const double row_length =
      std::max(1500.0, std::sqrt(static_cast<double>(vertices) * kUsualLength * kRowDistance));
  std::vector<kovltype> road;
  road.reserve(vertices);
  double x = 0;
  double y = 0;
  double station = 0;
  double row = 0;
  double wander = 0;  // from the row's direction, radians
  bool east = true;
  bool turning = false;
  for (size_t i = 0; i < vertices; ++i) {
    road.push_back({x, y, arcs && i % 2 == 1 ? Uniform(random, -0.03, 0.03) : 0.0, station});
    wander = std::clamp(0.95 * wander + Uniform(random, -0.12, 0.12) - 0.0002 * (x - row), -1.0, 1.0);
    double heading = east ? wander : std::numbers::pi - wander;
    if (turning) {
      heading = std::numbers::pi / 2 + Uniform(random, -0.1, 0.1);
      if (x > row - 20) {
        turning = false;
        east = !east;
      }
    } else if (east ? y > row_length : y < 0) {
      turning = true;
      row += kRowDistance;
    }
    const double length = Uniform(random, 10, 50);
    x += length * std::sin(heading);
    y += length * std::cos(heading);
    station += length;
  }
  return road;
}

namespace {

// Adds a point up to 30 m to either side of the segment.
void AddPlace(const kovltype& a, const kovltype& b, std::mt19937_64& random, Places* places) {
  const double f = Uniform(random, 0, 1);
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double right = Uniform(random, -30, 30) / std::sqrt(dx * dx + dy * dy);
  places->x.push_back(a.x + f * dx - right * dy);
  places->y.push_back(a.y + f * dy + right * dx);
}

}  // namespace

std::vector<std::vector<kovltype>> MakeRoads(size_t roads, size_t vertices, double side, bool arcs) {
  std::mt19937_64 random(2);
  std::vector<std::vector<kovltype>> made(roads);
  for (std::vector<kovltype>& road : made) {
    kovltype point{6'500'000 + Uniform(random, 0, side), 500'000 + Uniform(random, 0, side), 0, 0};
    double heading = Uniform(random, 0, 2 * std::numbers::pi);
    for (size_t i = 0; i < vertices; ++i) {
      point.bulge = arcs && i % 2 == 1 ? Uniform(random, -0.03, 0.03) : 0.0;
      road.push_back(point);
      heading += Uniform(random, -0.12, 0.12);
      const double length = Uniform(random, 10, 50);
      point.x += length * std::sin(heading);
      point.y += length * std::cos(heading);
      point.sek += length;
    }
  }
  return made;
}

Places MakePlaces(const std::vector<std::vector<kovltype>>& roads, size_t count) {
  std::mt19937_64 random(7);
  Places places;
  places.x.reserve(count);
  places.y.reserve(count);
  while (places.x.size() < count) {
    const std::vector<kovltype>& road = roads[random() % roads.size()];
    const size_t i = random() % (road.size() - 1);
    AddPlace(road[i], road[i + 1], random, &places);
  }
  return places;
}

Places MakePlaces(const std::vector<kovltype>& road, size_t count, Order order) {
  std::mt19937_64 random(7);
  Places places;
  places.x.reserve(count);
  places.y.reserve(count);
  const size_t segments = road.size() - 1;
  for (size_t k = 0; k < count; ++k) {
    const size_t i = order == Order::kRandom ? random() % segments : k * segments / count;
    AddPlace(road[i], road[i + 1], random, &places);
  }
  return places;
}

}  // namespace velmora
