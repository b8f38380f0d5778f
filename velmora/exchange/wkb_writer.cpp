#include <array>
#include <bit>
#include <cstdint>

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

std::string Header(int srs, const BoundingBox* bounds) {
  std::string bytes("GP\0", 3);  // and version 0
  constexpr char kLittleEndian = 1;
  constexpr char kWithBounds = 2;
  bytes += static_cast<char>(bounds != nullptr ? kLittleEndian | kWithBounds : kLittleEndian);
  Append(static_cast<std::uint32_t>(srs), &bytes);
  if (bounds == nullptr) return bytes;
  for (const double bound : {bounds->low.h, bounds->high.h, bounds->low.v, bounds->high.v})
    AppendReal(bound, &bytes);
  return bytes;
}

void AppendType(std::uint32_t type, std::string* bytes) {
  *bytes += '\1';  // little-endian
  Append(type, bytes);
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

BoundingBox BoundsOf(std::span<const kovltype> points) {
  if (points.empty()) return {};
  BoundingBox bounds = kEmptyBounds;
  for (size_t i = 0; i < points.size(); ++i) {
    bounds.Include(InPlane(points[i]));
    if (i > 0 && HasArc(points[i - 1], points[i]))
      bounds.Include(InPlane(MiddleOf(points[i - 1], points[i])));
  }
  return bounds;
}

std::string CompoundCurveBlob(std::span<const kovltype> points, int srs) {
  const BoundingBox bounds = BoundsOf(points);
  std::string bytes = Header(srs, &bounds);
  AppendType(kCompoundCurve + kWithMeasures, &bytes);
  std::string parts;
  size_t count = 0;
  for (size_t first = 0; first + 1 < points.size(); ++count) {
    const bool curved = HasArc(points[first], points[first + 1]);
    size_t last = first + 1;
    while (last + 1 < points.size() && HasArc(points[last], points[last + 1]) == curved) ++last;
    const std::span<const kovltype> part = points.subspan(first, last - first + 1);
    curved ? AppendArcs(part, &parts) : AppendLine(part, &parts);
    first = last;
  }
  AppendInteger(count, &bytes);
  return bytes + parts;
}

std::string LineStringBlob(std::span<const kovltype> points, int srs) {
  const BoundingBox bounds = BoundsOf(points);
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
