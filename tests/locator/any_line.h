// Roads of every shape, and points beside them.
#ifndef VELMORA_TESTS_LOCATOR_ANY_LINE_H_
#define VELMORA_TESTS_LOCATOR_ANY_LINE_H_

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <random>
#include <vector>

#include "tests/alignment/shapes.h"
#include "velmora/alignment/geometry.h"

namespace velmora {

inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

inline double AnyBulge(std::mt19937& random) {
  const double kBulges[] = {0, 1, -1, std::sqrt(2.0) - 1, 1 - std::sqrt(2.0), 1.0001e-6, -1e-5};
  const double kReaches[] = {0, 0.4, 3, 1e-3};
  const double reach = kReaches[random() % 4];
  return random() % 2 == 0 ? kBulges[random() % std::size(kBulges)] : Uniform(random, -reach, reach);
}

inline std::vector<kovltype> AnyLine(std::mt19937& random, size_t count) {
  const auto kind = random() % 8;
  const auto arcs = random() % 3;  // none, some, most
  const bool whole = random() % 3 == 0;
  const double step = std::pow(10.0, Uniform(random, -2.5, 3.5));
  const double distant = random() % 4 == 0 ? Uniform(random, 1e5, 8e6) : 0;
  double heading = Uniform(random, 0, 6.3);
  double x = distant, y = distant, station = Uniform(random, -1000, 1000);
  std::vector<kovltype> points;
  for (size_t i = 0; i < count; ++i) {
    points.push_back({x, y, random() % 3 < arcs ? AnyBulge(random) : 0.0, station});
    if (kind == 0) {  // anywhere: crosses itself over and over
      x = distant + Uniform(random, -5, 5) * step;
      y = distant + Uniform(random, -5, 5) * step;
    } else if (kind == 1) {  // a spiral
      const double turn = 0.2 * static_cast<double>(i + 1);
      x = distant + step * turn * std::sin(turn);
      y = distant + step * turn * std::cos(turn);
    } else if (kind == 2) {  // along the axes, back and forth
      (random() % 2 == 0 ? x : y) += step * static_cast<double>(static_cast<int>(random() % 5) - 2);
    } else {  // a road
      heading += kind == 3 ? 0 : Uniform(random, -0.3, 0.3) * static_cast<double>(kind - 3);
      const double length = random() % 20 == 0 ? Uniform(random, 0, 0.02) : step * Uniform(random, 0.1, 2);
      x += length * std::sin(heading);
      y += length * std::cos(heading);
    }
    if (whole) {
      x = std::round(x);
      y = std::round(y);
    }
    if (random() % 30 == 0) x = points.back().x, y = points.back().y;  // twice the same
    station += random() % 25 == 0 ? Uniform(random, -5, 5) : step;
  }
  if (random() % 4 == 0)
    for (kovltype& p : points) p.sek = -p.sek;
  if (random() % 12 == 0) {
    const double kOdd[] = {kNan, kInf, -kInf, 1e300, -1e160, 3e9, 1e12};
    kovltype& p = points[random() % count];
    double* const kFields[] = {&p.x, &p.y, &p.bulge, &p.sek};
    *kFields[random() % 4] = kOdd[random() % std::size(kOdd)];
  }
  return points;
}

inline PlanePoint AnyPlace(std::mt19937& random, const std::vector<kovltype>& points) {
  const size_t i = random() % points.size();
  const kovltype& a = points[i];
  const kovltype& b = points[std::min(i + 1, points.size() - 1)];
  const double size = std::hypot(b.x - a.x, b.y - a.y) + 1e-3;
  const double along = Uniform(random, -0.2, 1.2);
  const double away = Uniform(random, -1, 1) * size * std::pow(10.0, Uniform(random, -6, 1.5));
  PlanePoint p{a.y + along * (b.y - a.y) + away * (b.x - a.x) / size,
               a.x + along * (b.x - a.x) - away * (b.y - a.y) / size};
  switch (random() % 16) {
    case 0:
      return InPlane(a);
    case 1:
      return {std::round(p.h), std::round(p.v)};
    case 2:
    case 3: {  // beside an axis through the centre of an arc, near its circle
      const Arc arc = ArcFromBulge(InPlane(a), InPlane(b), a.bulge);
      const double from_axis = Uniform(random, -2e-5, 2e-5);
      const double out = (arc.radius + away) * (random() % 2 == 0 ? 1 : -1);
      return random() % 2 == 0 ? PlanePoint{arc.centre.h + from_axis, arc.centre.v + out}
                               : PlanePoint{arc.centre.h + out, arc.centre.v + from_axis};
    }
    case 4: {  // square to a segment's end
      const double end = 1e-4 * static_cast<double>(static_cast<int>(random() % 5) - 2);
      const double at = random() % 2 == 0 ? end : 1 + end;
      return {a.y + at * (b.y - a.y) + away * (b.x - a.x) / size,
              a.x + at * (b.x - a.x) - away * (b.y - a.y) / size};
    }
    case 5: {
      const double kOdd[] = {kNan, kInf, 1e300, -1e101, 1.05e9, -1.2e9, 1e7, -1e5};
      (random() % 2 == 0 ? p.h : p.v) = kOdd[random() % std::size(kOdd)];
      return p;
    }
    default:
      return p;
  }
}

}  // namespace velmora

#endif  // VELMORA_TESTS_LOCATOR_ANY_LINE_H_
