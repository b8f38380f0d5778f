// One entity of a DXF drawing, as far as roads need it.
#ifndef VELMORA_EXCHANGE_DXF_ENTITY_H_
#define VELMORA_EXCHANGE_DXF_ENTITY_H_

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/alignment/geometry.h"
#include "velmora/exchange/chains.h"
#include "velmora/exchange/dxf_groups.h"

namespace velmora::exchange {

enum class DxfKind { kOther, kLine, kArc, kPolyline, kVertex, kLightPolyline, kCurve };

struct DxfEntity {
  DxfEntity(std::string_view type_name, std::int64_t type_line);

  // Takes a group. False when it should be a number and is not.
  bool Take(const DxfGroup& group);
  // What a line, arc, vertex or light polyline needs and has not: "group 20"; empty when it has all.
  std::string Missing() const;

  DxfKind kind;
  std::string type;
  std::int64_t line;
  std::string handle;
  std::string layer;  // bytes as in the file
  bool in_paper_space = false;
  int flags = 0;                      // 70
  PlanePoint at{kMissing, kMissing};  // 10, 20
  PlanePoint to{kMissing, kMissing};  // 11, 21
  double radius = kMissing;           // 40
  double bulge = 0;                   // 42
  double start_angle = kMissing;      // 50, degrees
  double end_angle = kMissing;        // 51
  double extrusion[3] = {0, 0, 1};    // 210, 220, 230
  std::vector<kovltype> points;       // of a light polyline
  std::optional<std::string> name;    // of our extended data, bytes as in the file
  std::optional<double> station;      // likewise

 private:
  static constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

  bool in_our_data_ = false;
};

// Whether the entity lies in the plan, seen from above or from below.
bool IsPlane(const DxfEntity& entity);
bool IsSeenFromBelow(const DxfEntity& entity);

// The line or arc in the plan; nothing for a full circle.
std::optional<Piece> PieceOf(const DxfEntity& entity);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_DXF_ENTITY_H_
