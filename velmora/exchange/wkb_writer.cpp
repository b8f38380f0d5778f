#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>

#include "velmora/alignment/geometry.h"
#include "velmora/exchange/arcs.h"
#include "velmora/exchange/wkb.h"
#include "velmora/exchange/wkb_types.h"

namespace velmora::exchange {
namespace {

// Little-endian on every processor.
template <class Number>
void Append(Number number, std::string* bytes) {
  std::array<char, sizeof number> digits;
  for (size_t i = 0; i < sizeof number; ++i) digits[i] = static_cast<char>(number >> (8 * i) & 0xFFU);
  bytes->append(digits.data(), digits.size());
}
void AppendInteger(size_t number, std::string* bytes) { Append(static_cast<std::uint32_t>(number), bytes); }
void AppendReal(double number, std::string* bytes) { Append(std::bit_cast<std::uint64_t>(number), bytes); }

void AppendPoint(double x, double y, double measure, std::string* bytes) {
  AppendReal(x, bytes);
  AppendReal(y, bytes);
  AppendReal(measure, bytes);
}

std::string Header(int srs, const Bounds* bounds) {
  std::string bytes("GP\0", 3);  // and version 0
  constexpr char kLittleEndian = 1;
  constexpr char kWithBounds = 2;
  bytes += static_cast<char>(bounds != nullptr ? kLittleEndian | kWithBounds : kLittleEndian);
  Append(static_cast<std::uint32_t>(srs), &bytes);
  if (bounds == nullptr) return bytes;
  for (const double bound : {bounds->least_x, bounds->most_x, bounds->least_y, bounds->most_y})
    AppendReal(bound, &bytes);
  return bytes;
}

void AppendType(std::uint32_t type, std::string* bytes) {
  *bytes += '\1';  // little-endian
  Append(type, bytes);
}

bool IsCurved(const kovltype& from, const kovltype& to) {
  return !IsStraight(from.bulge) && (from.x != to.x || from.y != to.y);
}

kovltype MiddleOf(const kovltype& from, const kovltype& to) {
  const PlanePoint middle = PointAlong(from, to, 0.5);
  return {middle.v, middle.h, 0, (from.sek + to.sek) / 2};
}

void AppendLine(std::span<const kovltype> points, std::string* bytes) {
  AppendType(kLineString + kWithMeasures, bytes);
  AppendInteger(points.size(), bytes);
  for (const kovltype& point : points) AppendPoint(point.y, point.x, point.sek, bytes);
}

void AppendArcs(std::span<const kovltype> points, std::string* bytes) {
  AppendType(kCircularString + kWithMeasures, bytes);
  AppendInteger(2 * points.size() - 1, bytes);
  AppendPoint(points[0].y, points[0].x, points[0].sek, bytes);
  for (size_t i = 1; i < points.size(); ++i) {
    const kovltype middle = MiddleOf(points[i - 1], points[i]);
    AppendPoint(middle.y, middle.x, middle.sek, bytes);
    AppendPoint(points[i].y, points[i].x, points[i].sek, bytes);
  }
}

}  // namespace

Bounds BoundsOf(std::span<const kovltype> points) {
  if (points.empty()) return {};
  constexpr double kNone = std::numeric_limits<double>::infinity();
  Bounds bounds{kNone, -kNone, kNone, -kNone};
  const auto include = [&](const kovltype& point) {
    bounds.least_x = std::min(bounds.least_x, point.y);
    bounds.most_x = std::max(bounds.most_x, point.y);
    bounds.least_y = std::min(bounds.least_y, point.x);
    bounds.most_y = std::max(bounds.most_y, point.x);
  };
  for (size_t i = 0; i < points.size(); ++i) {
    include(points[i]);
    if (i > 0 && IsCurved(points[i - 1], points[i])) include(MiddleOf(points[i - 1], points[i]));
  }
  return bounds;
}

std::string CompoundCurveBlob(std::span<const kovltype> points, int srs) {
  const Bounds bounds = BoundsOf(points);
  std::string bytes = Header(srs, &bounds);
  AppendType(kCompoundCurve + kWithMeasures, &bytes);
  std::string parts;
  size_t count = 0;
  for (size_t first = 0; first + 1 < points.size(); ++count) {
    const bool curved = IsCurved(points[first], points[first + 1]);
    size_t last = first + 1;
    while (last + 1 < points.size() && IsCurved(points[last], points[last + 1]) == curved) ++last;
    const std::span<const kovltype> part = points.subspan(first, last - first + 1);
    curved ? AppendArcs(part, &parts) : AppendLine(part, &parts);
    first = last;
  }
  AppendInteger(count, &bytes);
  return bytes + parts;
}

std::string LineStringBlob(std::span<const kovltype> points, int srs) {
  const Bounds bounds = BoundsOf(points);
  std::string bytes = Header(srs, &bounds);
  AppendLine(points, &bytes);
  return bytes;
}

std::string PointBlob(double easting, double northing, int srs) {
  std::string bytes = Header(srs, nullptr);
  AppendType(kPoint, &bytes);
  AppendReal(easting, &bytes);
  AppendReal(northing, &bytes);
  return bytes;
}

}  // namespace velmora::exchange
