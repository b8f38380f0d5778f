#include <set>
#include <span>

#include "velmora/alignment/station_text.h"
#include "velmora/exchange/arcs.h"
#include "velmora/exchange/geopackage.h"
#include "velmora/exchange/wkb.h"
#include "velmora/exchange/wkt.h"
#include "velmora/platform/table_database.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"
#include "velmora/text/utc_text.h"

namespace velmora::exchange {
namespace {

constexpr int kUndefinedCartesian = -1;

// application_id is "GPKG", user_version 1.2.0.
constexpr const char* kSchema = R"(
  PRAGMA application_id = 0x47504B47;
  PRAGMA user_version = 10200;
  BEGIN;
  CREATE TABLE gpkg_spatial_ref_sys(
    srs_name TEXT NOT NULL,
    srs_id INTEGER NOT NULL PRIMARY KEY,
    organization TEXT NOT NULL,
    organization_coordsys_id INTEGER NOT NULL,
    definition TEXT NOT NULL,
    description TEXT);
  CREATE TABLE gpkg_contents(
    table_name TEXT NOT NULL PRIMARY KEY,
    data_type TEXT NOT NULL,
    identifier TEXT UNIQUE,
    description TEXT DEFAULT '',
    last_change DATETIME NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ', 'now')),
    min_x DOUBLE, min_y DOUBLE, max_x DOUBLE, max_y DOUBLE,
    srs_id INTEGER,
    CONSTRAINT fk_gc_r_srs_id FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys(srs_id));
  CREATE TABLE gpkg_geometry_columns(
    table_name TEXT NOT NULL,
    column_name TEXT NOT NULL,
    geometry_type_name TEXT NOT NULL,
    srs_id INTEGER NOT NULL,
    z TINYINT NOT NULL,
    m TINYINT NOT NULL,
    CONSTRAINT pk_geom_cols PRIMARY KEY (table_name, column_name),
    CONSTRAINT uk_gc_table_name UNIQUE (table_name),
    CONSTRAINT fk_gc_tn FOREIGN KEY (table_name) REFERENCES gpkg_contents(table_name),
    CONSTRAINT fk_gc_srs FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys(srs_id));
  CREATE TABLE gpkg_extensions(
    table_name TEXT,
    column_name TEXT,
    extension_name TEXT NOT NULL,
    definition TEXT NOT NULL,
    scope TEXT NOT NULL,
    CONSTRAINT ge_tce UNIQUE (table_name, column_name, extension_name));
  INSERT INTO gpkg_spatial_ref_sys VALUES
    ('Undefined Cartesian SRS', -1, 'NONE', -1, 'undefined', 'undefined Cartesian coordinate reference system'),
    ('Undefined geographic SRS', 0, 'NONE', 0, 'undefined', 'undefined geographic coordinate reference system'),
    ('WGS 84 geodetic', 4326, 'EPSG', 4326, 'GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563,AUTHORITY["EPSG","7030"]],AUTHORITY["EPSG","6326"]],PRIMEM["Greenwich",0,AUTHORITY["EPSG","8901"]],UNIT["degree",0.0174532925199433,AUTHORITY["EPSG","9122"]],AUTHORITY["EPSG","4326"]]', 'longitude/latitude coordinates in decimal degrees on the WGS 84 spheroid');
)";

class Writer {
 public:
  explicit Writer(const ExportInput& input)
      : input_(input), srs_(input.srs != 0 ? input.srs : kUndefinedCartesian) {
    const Sink sink = [this](std::string_view text) { profile_ += text; };
    TextSink out(sink);
    if (input.road.profile.size() > 1) WriteCurve(input.road.profile, false, &out);
    out.Flush();
  }

  std::string Write(const Sink& sink) {
    if (!database_.Make()) return database_.Error();
    database_.Run(kSchema);
    AddSpatialReference();
    AddRoad();
    AddStations();
    AddBorings();
    database_.Run("COMMIT");
    if (database_.Error().empty()) (void)database_.HandOver(sink);
    return database_.Error();
  }

 private:
  void AddSpatialReference() {
    if (srs_ == kUndefinedCartesian) return;
    TableStatement(&database_,
                   "INSERT OR IGNORE INTO gpkg_spatial_ref_sys VALUES(?, ?, 'EPSG', ?, 'undefined', NULL)")
        .BindText("EPSG:" + std::to_string(srs_))
        .BindInteger(srs_)
        .BindInteger(srs_)
        .Run();
  }

  // A table of features; `columns` are those after its number and its geometry.
  void AddTable(const char* name, const char* geometry, bool measures, const std::string& columns,
                const BoundingBox& bounds) {
    database_.Run(std::string("CREATE TABLE ") + name +
                  "(fid INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL, geom " + geometry + ", " + columns + ")");
    TableStatement(&database_,
                   "INSERT INTO gpkg_contents(table_name, data_type, identifier, last_change, min_x, min_y, "
                   "max_x, max_y, "
                   "srs_id) VALUES(?, 'features', ?, ?, ?, ?, ?, ?, ?)")
        .BindText(name)
        .BindText(name)
        .BindText(UtcDate(input_.created) + "T" + UtcTime(input_.created) + ".000Z")
        .Bind(bounds.low.h)
        .Bind(bounds.low.v)
        .Bind(bounds.high.h)
        .Bind(bounds.high.v)
        .BindInteger(srs_)
        .Run();
    TableStatement(&database_, "INSERT INTO gpkg_geometry_columns VALUES(?, 'geom', ?, ?, 0, ?)")
        .BindText(name)
        .BindText(geometry)
        .BindInteger(srs_)
        .BindInteger(measures ? 1 : 0)
        .Run();
  }

  void AddLine(const char* table, const char* geometry, const std::string& blob, const BoundingBox& bounds) {
    AddTable(table, geometry, true, "name TEXT, profile TEXT", bounds);
    TableStatement(&database_, std::string("INSERT INTO ") + table + "(geom, name, profile) VALUES(?, ?, ?)")
        .BindBytes(blob)
        .BindText(input_.road.name)
        .BindText(profile_)
        .Run();
  }

  void AddRoad() {
    const std::vector<kovltype>& plan = input_.road.plan;
    const BoundingBox bounds = BoundsOf(plan);
    AddLine("alignment", "COMPOUNDCURVE", CompoundCurveBlob(plan, srs_), bounds);
    database_.Run(
        "INSERT INTO gpkg_extensions VALUES('alignment', 'geom', 'gpkg_geom_COMPOUNDCURVE', "
        "'http://www.geopackage.org/spec120/#extension_geometry_types', 'read-write')");
    AddLine("alignment_stroked", "LINESTRING", LineStringBlob(Chords(plan, input_.chord_error), srs_),
            bounds);
  }

  void AddStations() {
    const std::vector<Tick> ticks = TicksAt(input_.road.plan, input_.stations);
    if (ticks.empty()) return;
    std::vector<kovltype> places;
    for (const Tick& tick : ticks) places.push_back({tick.at.v, tick.at.h, 0, tick.station});
    AddTable("stations", "POINT", false, "station DOUBLE, label TEXT", BoundsOf(places));
    TableStatement insert(&database_, "INSERT INTO stations(geom, station, label) VALUES(?, ?, ?)");
    for (const Tick& tick : ticks) {
      const std::string blob = PointBlob(tick.at.h, tick.at.v, srs_);
      const std::string label = RoundStationText(tick.station, false);
      insert.BindBytes(blob).Bind(tick.station).BindText(label).Run();
    }
  }

  // The list's own columns, with a number after a name that is taken.
  std::string OwnColumns() const {
    std::set<std::wstring> taken;
    for (const wchar_t* name : {L"fid", L"geom", L"id", L"level", L"station", L"offset", L"side",
                                L"profile_level", L"difference", L"status"})
      taken.insert(name);
    std::string columns;
    for (const std::string& title : input_.borings.own_titles) {
      std::string name = title.empty() ? "column" : title;
      const auto folded = [&name] {
        std::wstring lower = WideFromUtf8(name);
        for (wchar_t& letter : lower) letter = LowerLetter(letter);
        return lower;
      };
      for (int number = 2; !taken.insert(folded()).second; ++number)
        name = title + "_" + std::to_string(number);
      columns += ", " + QuotedSqlName(name) + " TEXT";
    }
    return columns;
  }

  void AddBorings() {
    const std::vector<LocatedPoint>& points = input_.borings.points;
    if (points.empty()) return;
    std::vector<kovltype> places;
    for (const LocatedPoint& point : points) places.push_back({point.northing, point.easting, 0, 0});
    AddTable(
        "borings", "POINT", false,
        "id TEXT, level DOUBLE, station DOUBLE, offset DOUBLE, side TEXT, profile_level DOUBLE, difference "
        "DOUBLE, status TEXT" +
            OwnColumns(),
        BoundsOf(places));
    const size_t own = input_.borings.own_titles.size();
    std::string parameters = "NULL, ?, ?, ?, ?, ?, ?, ?, ?, ?";
    for (size_t i = 0; i < own; ++i) parameters += ", ?";
    TableStatement insert(&database_, "INSERT INTO borings VALUES(" + parameters + ")");
    for (const LocatedPoint& point : points) {
      std::optional<double> difference;
      if (point.level && point.profile_level) difference = *point.level - *point.profile_level;
      const std::string blob = PointBlob(point.easting, point.northing, srs_);
      const std::string side(point.offset ? OffsetSide(*point.offset) : "");
      insert.BindBytes(blob).BindText(point.id).Bind(point.level).Bind(point.station).Bind(point.offset);
      insert.BindText(side).Bind(point.profile_level).Bind(difference).BindText(point.status);
      for (size_t i = 0; i < own; ++i)
        i < point.own.size() ? insert.BindText(point.own[i]) : insert.Bind(std::nullopt);
      if (!insert.Run()) return;
    }
  }

  const ExportInput& input_;
  int srs_;
  std::string profile_;
  TableDatabase database_;
};

}  // namespace

std::string WriteGeoPackage(const ExportInput& input, const Sink& sink) {
  const std::string error = Writer(input).Write(sink);
  return error.empty() ? error : "cannot be written as GeoPackage: " + error;
}

}  // namespace velmora::exchange
