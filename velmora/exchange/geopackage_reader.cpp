#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "velmora/exchange/geopackage.h"
#include "velmora/exchange/import.h"
#include "velmora/exchange/road_names.h"
#include "velmora/exchange/wkb.h"
#include "velmora/exchange/wkt.h"
#include "velmora/platform/table_database.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"
#include "velmora/text/quoted.h"

namespace velmora::exchange {
namespace {

constexpr size_t kMostRoadRows = 100'000;
constexpr size_t kMostLinePoints = 10'000'000;

struct Layer {
  std::string table;
  std::string geometry;  // its column
  bool degrees = false;
  bool has_levels = false;  // its geometries may have them
};

bool SameName(std::string_view a, std::string_view b) {
  return EqualNoCase(WideFromUtf8(a), WideFromUtf8(b));
}

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  for (const std::string_view other : names)
    if (SameName(name, other)) return true;
  return false;
}

// The layers whose geometry is one of `types`, or the one named.
std::vector<Layer> LayersOf(TableDatabase* database, std::string_view wanted,
                            std::initializer_list<std::string_view> types) {
  std::vector<Layer> layers;
  TableStatement rows(
      database,
      "SELECT g.table_name, g.column_name, g.geometry_type_name, s.definition, g.z "
      "FROM gpkg_geometry_columns g LEFT JOIN gpkg_spatial_ref_sys s ON s.srs_id = g.srs_id LIMIT 10000");
  while (rows.Next()) {
    const Layer layer{std::string(rows.Bytes(0)), std::string(rows.Bytes(1)),
                      rows.Bytes(3).starts_with("GEO"), rows.Integer(4) != 0};
    if (wanted.empty() ? IsOneOf(rows.Bytes(2), types) : SameName(layer.table, wanted))
      layers.push_back(layer);
  }
  return layers;
}

std::string CannotRead(const TableDatabase& database) {
  return "cannot be read as GeoPackage: " + database.Error();
}

std::string NoLayer(const TableDatabase& database, std::string_view wanted, const char* what) {
  if (!database.Error().empty()) return CannotRead(database);
  if (!wanted.empty()) return "has no layer " + Quoted(wanted);
  return std::string("has no layer of ") + what;
}

std::string InDegrees(const Layer& layer) {
  return "layer " + Quoted(layer.table) +
         " is in degrees: project it to a system in metres first, with ogr2ogr -t_srs";
}

// The first of the names that is a column, -1 without one.
int Find(const TableStatement& rows, std::initializer_list<std::string_view> names) {
  for (const std::string_view name : names)
    for (int i = 1; i < rows.Columns(); ++i)
      if (SameName(rows.ColumnName(i), name)) return i;
  return -1;
}

std::string Text(const TableStatement& rows, int column) {
  switch (rows.KindOf(column)) {
    case TableStatement::Kind::kInteger:
      return std::to_string(rows.Integer(column));
    case TableStatement::Kind::kReal:
      return FormatShortest(rows.Number(column));
    case TableStatement::Kind::kText: {
      const std::string_view text = rows.Bytes(column);
      return IsValidUtf8(text) ? std::string(text) : Utf8FromWide(WideFromUtf8(text));
    }
    default:
      return {};
  }
}

// The number of a feature, in the first column of what Select selects.
std::string Select(const Layer& layer) { return "SELECT rowid, * FROM " + QuotedSqlName(layer.table); }

class RoadReader {
 public:
  explicit RoadReader(TableDatabase* database) : database_(*database) {}

  // False when the file is too large.
  bool Read(const Layer& layer) {
    TableStatement rows(&database_, Select(layer));
    const int geometry = Find(rows, {layer.geometry});
    const int name = Find(rows, {"name", "namn"});
    const int profile = Find(rows, {"profile"});
    while (geometry >= 0 && rows.Next()) {
      BlobLine line = ReadLineBlob(rows.Bytes(geometry));
      points_ += line.points.size();
      if (points_ > kMostLinePoints || roads_.size() >= kMostRoadRows) return false;
      const std::string number = std::to_string(rows.Integer(0));
      ImportedRoad& road = roads_.emplace_back();
      suffixes_.push_back(" #" + number);
      if (name >= 0) road.road.name = Text(rows, name);
      // An export keeps the name of a road that has none.
      const bool own = layer.table.starts_with("alignment") && profile >= 0 && name >= 0 &&
                       rows.KindOf(name) == TableStatement::Kind::kText;
      if (road.road.name.empty() && !own) road.road.name = layer.table;
      road.road.plan = std::move(line.points);
      road.has_stations = line.has_stations;
      if (profile >= 0) TakeProfile(Text(rows, profile), &road);
      if (!line.error.empty())
        Refuse(0, "feature " + number + " of layer " + Quoted(layer.table) + " " + line.error, &road);
    }
    return true;
  }

  std::vector<ImportedRoad> Roads() {
    MakeNamesUnique(suffixes_, &roads_);
    return std::move(roads_);
  }

 private:
  // The column may be another program's.
  static void TakeProfile(std::string_view text, ImportedRoad* road) {
    if (text.empty()) return;
    ParsedCurve curve = ParseProfile(text);
    road->road.profile = std::move(curve.points);
    if (!curve.problem.empty()) Note(0, "the column \"profile\" is ignored: " + curve.problem, road);
  }

  TableDatabase& database_;
  std::vector<ImportedRoad> roads_;
  std::vector<std::string> suffixes_;
  size_t points_ = 0;
};

}  // namespace

std::vector<ImportedRoad> ReadGeoPackage(const CString& path, std::string_view layer, std::string* problem) {
  TableDatabase database;
  (void)database.OpenToRead(path);
  std::vector<Layer> layers = LayersOf(&database, layer,
                                       {"GEOMETRY", "LINESTRING", "CURVE", "CIRCULARSTRING", "COMPOUNDCURVE",
                                        "MULTILINESTRING", "MULTICURVE"});
  // The same road as "alignment", in chords.
  const auto is = [](const char* name) { return [name](const Layer& found) { return found.table == name; }; };
  if (layer.empty() && std::any_of(layers.begin(), layers.end(), is("alignment")))
    std::erase_if(layers, is("alignment_stroked"));
  if (layers.empty()) *problem = NoLayer(database, layer, "lines");
  RoadReader reader(&database);
  for (const Layer& found : layers) {
    if (found.degrees) *problem = InDegrees(found);
    if (problem->empty() && !reader.Read(found))
      *problem = "has more lines than can be read; give the road's --layer";
  }
  if (!database.Error().empty()) *problem = CannotRead(database);
  if (!problem->empty()) return {};
  return reader.Roads();
}

GeoPackagePoints::GeoPackagePoints(const CString& path, std::string_view layer)
    : database_(std::make_unique<TableDatabase>()) {
  (void)database_->OpenToRead(path);
  const std::vector<Layer> layers = LayersOf(database_.get(), layer, {"POINT", "MULTIPOINT"});
  if (layers.empty()) {
    problem_ = NoLayer(*database_, layer, "points");
  } else if (layers.size() > 1) {
    problem_ = "has several layers of points; name one after a colon:";
    for (const Layer& found : layers) problem_ += " " + Quoted(found.table);
  } else if (layers[0].degrees) {
    problem_ = InDegrees(layers[0]);
  }
  if (!problem_.empty()) return;
  has_levels_ = layers[0].has_levels;
  rows_ = std::make_unique<TableStatement>(database_.get(), Select(layers[0]));
  geometry_ = Find(*rows_, {layers[0].geometry});
  for (int i = 1; i < rows_->Columns(); ++i)
    if (i != geometry_) titles_.push_back(rows_->ColumnName(i));
  if (!database_->Error().empty())
    problem_ = CannotRead(*database_);
  else if (geometry_ < 0)
    problem_ = "layer " + Quoted(layers[0].table) + " lacks its column of geometries";
}

GeoPackagePoints::~GeoPackagePoints() = default;

bool GeoPackagePoints::Next() {
  if (!problem_.empty()) return false;
  if (!rows_->Next()) {
    if (!database_->Error().empty()) problem_ = CannotRead(*database_);
    return false;
  }
  place_ = ReadPointBlob(rows_->Bytes(geometry_));
  return true;
}

std::int64_t GeoPackagePoints::Number() const { return rows_->Integer(0); }

GeoPackagePoints::Value GeoPackagePoints::Field(size_t column) {
  const int before = static_cast<int>(column) + 1;
  const int at = before < geometry_ ? before : before + 1;
  const TableStatement::Kind kind = rows_->KindOf(at);
  if (kind == TableStatement::Kind::kReal)
    if (const double number = rows_->Number(at); std::isfinite(number)) return number;
  if (kind == TableStatement::Kind::kText)
    if (const std::string_view text = rows_->Bytes(at); IsValidUtf8(text)) return text;
  text_ = Text(*rows_, at);
  return text_;
}

}  // namespace velmora::exchange
