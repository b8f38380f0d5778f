// Roads and points as GeoPackage files.
//
//   table              geometry         columns
//   alignment          COMPOUNDCURVE M  name; profile, as well-known text of station and level (wkt.h)
//   alignment_stroked  LINESTRING M     the same, with chords for arcs, for programs that know no curves
//   stations           POINT            station, label; when there are any
//   borings            POINT            id, level, station, offset, side, profile_level, difference, status,
//   and
//                                       the list's own columns; when there are any
//
// x is easting and y is northing, in metres; a measure is a station. The spatial reference is named by its
// EPSG code, its definition left "undefined" for the reader to look up; without a code it is the undefined
// Cartesian one.
#ifndef VELMORA_EXCHANGE_GEOPACKAGE_H_
#define VELMORA_EXCHANGE_GEOPACKAGE_H_

#include <string>
#include <string_view>
#include <vector>

#include "velmora/exchange/road.h"
#include "velmora/exchange/sink.h"
#include "velmora/text/string.h"

namespace velmora::exchange {

// Returns why not, before anything is written; empty when done.
std::string WriteGeoPackage(const ExportInput& input, const Sink& sink);

// The lines of a layer, or of all layers of lines; a measure is a station. Of a file that has "alignment",
// "alignment_stroked" is read only by its name. A road is named by the column "name" or "namn", else by its
// layer; equal names get the numbers of their features. *problem says why the file as a whole is refused.
std::vector<ImportedRoad> ReadGeoPackage(const CString& path, std::string_view layer, std::string* problem);

// The points of a layer, or of the only layer of points; `own` is all columns but the geometry. The id is the
// column "id", "name" or "namn", else the feature's number; the level is that of the geometry, if it has one.
LocatedPoints ReadGeoPackagePoints(const CString& path, std::string_view layer, std::string* problem);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_GEOPACKAGE_H_
