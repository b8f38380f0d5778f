// Roads and points as GeoPackage files.
//
//   table              geometry         columns
//   alignment          COMPOUNDCURVE M  name; profile, as well-known text of station and level (wkt.h)
//   alignment_stroked  LINESTRING M     the same, with chords for arcs, for programs that know no curves
//   stations           POINT            station, label; when there are any
//   borings            POINT            id, level, station, offset, side, profile_level, difference, status,
//                                       the list's own columns; when there are any
//
// x is easting and y is northing, in metres; a measure is a station. The spatial reference is named by its
// EPSG code, its definition left "undefined" for the reader to look up; without a code it is the undefined
// Cartesian one.
#ifndef VELMORA_EXCHANGE_GEOPACKAGE_H_
#define VELMORA_EXCHANGE_GEOPACKAGE_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/exchange/road.h"
#include "velmora/exchange/sink.h"
#include "velmora/exchange/wkb.h"
#include "velmora/text/string.h"

namespace velmora {
struct TableCell;
class TableDatabase;
class TableScan;
}  // namespace velmora

namespace velmora::exchange {

// Returns why not, before anything is written; empty when done.
std::string WriteGeoPackage(const ExportInput& input, const Sink& sink);

// The lines of a layer, or of all layers of lines; a measure is a station. Of a file that has "alignment",
// "alignment_stroked" is read only by its name. A road is named by the column "name" or "namn", else by its
// layer; equal names get the numbers of their features. *problem says why the file as a whole is refused.
std::vector<ImportedRoad> ReadGeoPackage(const CString& path, std::string_view layer, std::string* problem);

// A number or text as UTF-8, else nothing.
std::string TextOf(const TableCell& cell);

// What is done with the features of a layer: Begin, Field for each column, End.
class FeatureSink {
 public:
  virtual ~FeatureSink() = default;
  // `place` is nothing for a feature that is not a point.
  virtual void Begin(std::int64_t number, const std::optional<BlobPoint>& place) = 0;
  virtual void Field(const TableCell& cell) = 0;
  // Whether GeoPackagePoints::Read returns behind this feature.
  virtual bool End() = 0;
};

// Reads the features of a layer, or of the only layer of points, one after the other.
class GeoPackagePoints {
 public:
  GeoPackagePoints(const CString& path, std::string_view layer);
  ~GeoPackagePoints();

  // Why the layer cannot be read, or not to its end; else empty.
  const std::string& Problem() const { return problem_; }
  // Of all columns but the geometry.
  const std::vector<std::string>& Titles() const { return titles_; }
  // Whether points may have levels.
  bool HasLevels() const { return has_levels_; }

  // The next features. False at the end.
  bool Read(FeatureSink* sink);

 private:
  bool Take(size_t column, std::span<const TableCell> cells);

  std::unique_ptr<TableDatabase> database_;
  std::unique_ptr<TableScan> rows_;
  std::string problem_;
  std::vector<std::string> titles_;
  bool has_levels_ = false;
  FeatureSink* sink_ = nullptr;
};

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_GEOPACKAGE_H_
