#include "velmora/exchange/dxf_entity.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "velmora/exchange/dxf_text.h"

namespace velmora::exchange {
namespace {

constexpr double kLevel = 1e-9;  // how far the extrusion of a plane entity may be from the vertical

DxfKind KindOf(std::string_view type) {
  constexpr std::pair<std::string_view, DxfKind> kKinds[] = {
      {"LINE", DxfKind::kLine},
      {"ARC", DxfKind::kArc},
      {"POLYLINE", DxfKind::kPolyline},
      {"VERTEX", DxfKind::kVertex},
      {"LWPOLYLINE", DxfKind::kLightPolyline},
      {"SPLINE", DxfKind::kCurve},
      {"ELLIPSE", DxfKind::kCurve},
  };
  for (const auto& [name, kind] : kKinds)
    if (name == type) return kind;
  return DxfKind::kOther;
}

}  // namespace

DxfEntity::DxfEntity(std::string_view type_name, std::int64_t type_line)
    : kind(KindOf(type_name)), type(type_name), line(type_line) {}

bool DxfEntity::Take(const DxfGroup& group) {
  if (kind == DxfKind::kOther) return true;
  bool understood = true;
  const auto real = [&](double* value) {
    const auto number = ParseDxfNumber(group.value);
    understood = number.has_value();
    *value = number.value_or(0);
  };
  const auto integer = [&] { return ParseDxfInteger(group.value).value_or(0); };
  const bool light = kind == DxfKind::kLightPolyline;
  switch (group.code) {
    case 5:
      handle = group.value.substr(0, kLongestDxfText);
      break;
    case 8:
      layer = group.value.substr(0, kLongestDxfText);
      break;
    case 10:
      if (light) points.push_back({kMissing, kMissing, 0, 0});
      real(light ? &points.back().y : &at.h);
      break;
    case 20:
      if (light && points.empty()) break;
      real(light ? &points.back().x : &at.v);
      break;
    case 11:
      real(&to.h);
      break;
    case 21:
      real(&to.v);
      break;
    case 40:
      real(&radius);
      break;
    case 42:
      if (light && points.empty()) break;
      real(light ? &points.back().bulge : &bulge);
      break;
    case 50:
      real(&start_angle);
      break;
    case 51:
      real(&end_angle);
      break;
    case 67:
      in_paper_space = integer() == 1;
      break;
    case 70:
      flags = integer();
      break;
    case 210:
    case 220:
    case 230:
      real(&extrusion[(group.code - 210) / 10]);
      break;
    case 1000:
      if (in_our_data_) name = group.value.substr(0, kLongestDxfText);
      break;
    case 1001:
      in_our_data_ = group.value == kDxfApplication;
      break;
    case 1040:
      if (in_our_data_ && !station) real(&station.emplace());
      break;
    default:
      break;
  }
  return understood;
}

std::string DxfEntity::Missing() const {
  const bool arc = kind == DxfKind::kArc;
  const bool line = kind == DxfKind::kLine;
  std::string missing;
  const auto need = [&](double number, int code) {
    if (std::isnan(number) && missing.empty()) missing = "group " + std::to_string(code);
  };
  if (arc || line || kind == DxfKind::kVertex) need(at.h, 10), need(at.v, 20);
  if (line) need(to.h, 11), need(to.v, 21);
  if (arc) need(radius, 40), need(start_angle, 50), need(end_angle, 51);
  for (const kovltype& point : points) need(point.x, 20);
  return missing;
}

bool IsPlane(const DxfEntity& entity) {
  return std::fabs(entity.extrusion[0]) <= kLevel && std::fabs(entity.extrusion[1]) <= kLevel &&
         entity.extrusion[2] != 0;
}

bool IsSeenFromBelow(const DxfEntity& entity) { return entity.extrusion[2] < 0; }

std::optional<Piece> PieceOf(const DxfEntity& entity) {
  if (entity.kind == DxfKind::kLine) return Piece{entity.at, entity.to, 0};
  // An arc runs counter-clockwise from its first angle; seen from below, east and west change places.
  const double side = IsSeenFromBelow(entity) ? -1 : 1;
  double degrees = std::fmod(entity.end_angle - entity.start_angle, 360);
  if (degrees <= 0) degrees += 360;
  if (degrees == 360) return {};
  const auto end_at = [&](double angle) {
    const double radians = angle * std::numbers::pi / 180;
    return PlanePoint{side * (entity.at.h + entity.radius * std::cos(radians)),
                      entity.at.v + entity.radius * std::sin(radians)};
  };
  return Piece{end_at(entity.start_angle), end_at(entity.end_angle),
               side * std::tan(degrees * std::numbers::pi / 720)};
}

}  // namespace velmora::exchange
