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

Places MakePlaces(const std::vector<kovltype>& road, size_t count, Order order) {
  std::mt19937_64 random(7);
  Places places;
  places.x.reserve(count);
  places.y.reserve(count);
  const size_t segments = road.size() - 1;
  for (size_t k = 0; k < count; ++k) {
    const size_t i = order == Order::kRandom ? random() % segments : k * segments / count;
    const double f = Uniform(random, 0, 1);
    const double dx = road[i + 1].x - road[i].x;
    const double dy = road[i + 1].y - road[i].y;
    const double right = Uniform(random, -30, 30) / std::sqrt(dx * dx + dy * dy);
    places.x.push_back(road[i].x + f * dx - right * dy);
    places.y.push_back(road[i].y + f * dy + right * dx);
  }
  return places;
}

}  // namespace velmora
