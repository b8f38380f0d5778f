#include <algorithm>
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
    const Layer layer{std::string(rows.Cell(0).bytes), std::string(rows.Cell(1).bytes),
                      rows.Cell(3).bytes.starts_with("GEO"), rows.Cell(4).integer != 0};
    if (wanted.empty() ? IsOneOf(rows.Cell(2).bytes, types) : SameName(layer.table, wanted))
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
      BlobLine line = ReadLineBlob(rows.Cell(geometry).bytes);
      points_ += line.points.size();
      if (points_ > kMostLinePoints || roads_.size() >= kMostRoadRows) return false;
      const std::string number = std::to_string(rows.Cell(0).integer);
      ImportedRoad& road = roads_.emplace_back();
      road.layer = layer.table;
      suffixes_.push_back(" #" + number);
      if (name >= 0) road.road.name = TextOf(rows.Cell(name));
      // An export keeps the name of a road that has none.
      const bool own = layer.table.starts_with("alignment") && profile >= 0 && name >= 0 &&
                       rows.Cell(name).kind == TableCell::Kind::kText;
      if (road.road.name.empty() && !own) road.road.name = layer.table;
      road.road.plan = std::move(line.points);
      road.has_stations = line.has_stations;
      if (profile >= 0) TakeProfile(TextOf(rows.Cell(profile)), &road);
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

std::string TextOf(const TableCell& cell) {
  switch (cell.kind) {
    case TableCell::Kind::kInteger:
      return std::to_string(cell.integer);
    case TableCell::Kind::kReal:
      return FormatShortest(cell.number);
    case TableCell::Kind::kText:
      return IsValidUtf8(cell.bytes) ? std::string(cell.bytes) : Utf8FromWide(WideFromUtf8(cell.bytes));
    default:
      return {};
  }
}

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
  const TableStatement columns(database_.get(), Select(layers[0]));
  const int geometry = Find(columns, {layers[0].geometry});
  std::vector<std::string> cells = {geometry < 0 ? "NULL" : QuotedSqlName(columns.ColumnName(geometry)),
                                    "rowid"};
  for (int i = 1; i < columns.Columns(); ++i) {
    if (i == geometry) continue;
    titles_.push_back(columns.ColumnName(i));
    cells.push_back(QuotedSqlName(titles_.back()));
  }
  rows_ = std::make_unique<TableScan>(
      database_.get(), layers[0].table, cells,
      [this](size_t column, std::span<const TableCell> cells) { return Take(column, cells); });
  if (!database_->Error().empty())
    problem_ = CannotRead(*database_);
  else if (geometry < 0)
    problem_ = "layer " + Quoted(layers[0].table) + " lacks its column of geometries";
}

GeoPackagePoints::~GeoPackagePoints() = default;

bool GeoPackagePoints::Read(FeatureSink* sink) {
  if (!rows_ || !problem_.empty()) return false;
  sink_ = sink;
  if (rows_->Next()) return true;
  if (!database_->Error().empty()) problem_ = CannotRead(*database_);
  rows_.reset();
  return false;
}

// The geometry comes first, then the feature's number.
bool GeoPackagePoints::Take(size_t column, std::span<const TableCell> cells) {
  if (column == 0) {
    sink_->Begin(cells[1].integer, ReadPointBlob(cells[0].bytes));
    column = 2;
    cells = cells.subspan(2);
  }
  for (const TableCell& cell : cells) sink_->Field(cell);
  return column + cells.size() == titles_.size() + 2 && sink_->End();
}

}  // namespace velmora::exchange
