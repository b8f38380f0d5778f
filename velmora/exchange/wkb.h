// Geometries as GeoPackage stores them: a header with the spatial reference and the bounds, then WKB.
//
// x is easting and y is northing; a measure is a station. Curves are COMPOUNDCURVE M, whose arcs are given by
// their ends and their middle.
#ifndef VELMORA_EXCHANGE_WKB_H_
#define VELMORA_EXCHANGE_WKB_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/alignment/bounding_box.h"

namespace velmora::exchange {

// Of the points and the middles of the arcs between them; all 0 without a point.
BoundingBox BoundsOf(std::span<const kovltype> points);

std::string CompoundCurveBlob(std::span<const kovltype> points, int srs);
// The points joined by straights, whatever their bulges.
std::string LineStringBlob(std::span<const kovltype> points, int srs);
std::string PointBlob(double easting, double northing, int srs);

// LINESTRING, CIRCULARSTRING, COMPOUNDCURVE, and MULTILINESTRING and MULTICURVE whose parts join.
struct BlobLine {
  std::vector<kovltype> points;  // arcs may have any sweep below a full circle
  bool has_stations = false;     // at all points; else `sek` is 0
  std::string error;             // why there is no line
};
BlobLine ReadLineBlob(std::string_view blob);

struct BlobPoint {
  double easting = 0;
  double northing = 0;
  std::optional<double> level;
};
// A POINT, or a MULTIPOINT of one.
std::optional<BlobPoint> ReadPointBlob(std::string_view blob);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_WKB_H_
