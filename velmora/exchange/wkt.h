// Curves as well-known text (ISO 19125), arcs exact.
//
//   COMPOUNDCURVE M ((0 0 0, 0 100 100), CIRCULARSTRING M (0 100 100, 29.3 170.7 178.5, 100 200 257.1))
//
// A point is easting, northing and station; in a profile it is station and level. Numbers have the digits
// that doubles need.
#ifndef VELMORA_EXCHANGE_WKT_H_
#define VELMORA_EXCHANGE_WKT_H_

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/exchange/sink.h"

namespace velmora::exchange {

// A COMPOUNDCURVE, with `measures` M.
void WriteCurve(std::span<const kovltype> points, bool measures, TextSink* out);

struct ParsedCurve {
  std::vector<kovltype> points;
  bool has_stations = false;
  std::string problem;  // empty for a curve
};
// LINESTRING, CIRCULARSTRING, COMPOUNDCURVE, and MULTILINESTRING and MULTICURVE whose parts join; Z is
// ignored, and so is "SRID=...;" before it.
ParsedCurve ParseCurve(std::string_view text);

// The curve of a profile, whose stations grow.
ParsedCurve ParseProfile(std::string_view text);

// Whether it is a POINT, of any dimension.
bool IsPointText(std::string_view text);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_WKT_H_
