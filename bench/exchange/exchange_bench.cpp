// Writing roads and borings in other programs' formats, beside what a program without velmora would do at
// best: std::to_chars for a file of as many bytes, SQLite's own inserts of the same rows.
//
//   exchange_bench [--small] [--json FILE] [--folder DIR]
//
// Ours and the peer take turns in one process; each figure is the median of its rounds. The files lie in
// memory
// (/dev/shm) unless a folder is named: ours flush what they write, the peers do not.
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

#include "bench/files/made_up.h"
#include "bench/files/peers.h"
#include "bench/measure.h"
#include "velmora/exchange/dxf.h"
#include "velmora/exchange/geopackage.h"
#include "velmora/exchange/wkb.h"
#include "velmora/exchange/wkt_csv.h"
#include "velmora/platform/files.h"

namespace velmora::bench {
namespace {

class ExchangeBench {
 public:
  explicit ExchangeBench(const FileSettings& settings)
      : settings_(settings),
        rounds_(settings.small ? 5 : 7),
        count_(settings.small ? 200'000 : 1'000'000),
        folder_(settings.folder) {
    std::mt19937 random(2);
    const auto part = [&random](unsigned below, double unit) {
      return static_cast<double>(random() % below) * unit;
    };
    road_.road.name = "Väg";
    road_.road.plan = MadeUpPlan(count_);
    borings_.road = {"Väg", {{6.58e6, 150e3, 0, 0}, {6.58e6, 250e3, 0, 1e5}}, {}};
    borings_.borings.own_titles = {"Metod"};
    for (int i = 0; i < count_; ++i) {
      const kovltype& at = road_.road.plan[static_cast<size_t>(i)];
      exchange::LocatedPoint& boring = borings_.borings.points.emplace_back();
      boring.id = "21T" + std::to_string(i);
      boring.northing = at.x;
      boring.easting = at.y;
      boring.level = part(10'000, 1e-2);
      boring.station = at.sek;
      boring.offset = part(10'000, 1e-3) - 5;
      boring.status = "on the alignment";
      boring.own = {"Jb2"};
    }
  }
  ExchangeBench(const ExchangeBench&) = delete;
  ExchangeBench& operator=(const ExchangeBench&) = delete;

  int Run() {
    figures_.Head("Roads of " + std::to_string(count_) + " points and as many borings in " +
                  settings_.folder);
    Export("road, DXF", [](const exchange::ExportInput& road, const exchange::Sink& sink) {
      Require(exchange::WriteDxf(road, sink).empty(), "cannot write DXF");
    });
    Export("road, CSV with WKT", exchange::WriteWktCsv);
    Borings();
    return settings_.json.empty() || figures_.WriteJson(settings_.json) ? 0 : 1;
  }

 private:
  using Write = void (*)(const exchange::ExportInput&, const exchange::Sink&);

  std::string File(const char* name) const { return folder_.File(name); }

  static void WriteFile(const std::string& name, Write write, const exchange::ExportInput& input) {
    FileReplacement file;
    Require(file.Begin(PathFromSystem(name)), "cannot create a file");
    write(input, [&](std::string_view bytes) { Require(file.Write(bytes), "cannot write"); });
    Require(file.Commit(), "cannot replace a file");
  }

  void Export(const char* name, Write write) {
    const std::string ours = File("ours");
    const std::string theirs = File("theirs.vl");
    const Pair seconds = TakeTurns(
        rounds_, [&] { WriteFile(ours, write, road_); },
        [&] {
          WritePoints(theirs, {road_.road.plan, {}});
        });
    const auto speed = [](const std::string& file, double time) {
      return static_cast<double>(std::filesystem::file_size(file)) / 1e6 / time;
    };
    const double our_speed = speed(ours, seconds.ours);
    const double their_speed = speed(theirs, seconds.theirs);
    figures_.Add({name, our_speed, their_speed, "MB/s", "std::to_chars and write", our_speed / their_speed,
                  seconds.noise});
  }

  void Borings() {
    std::vector<std::string> blobs;
    for (const exchange::LocatedPoint& point : borings_.borings.points)
      blobs.push_back(exchange::PointBlob(point.easting, point.northing, 3006));
    const Write write = [](const exchange::ExportInput& input, const exchange::Sink& sink) {
      Require(exchange::WriteGeoPackage(input, sink).empty(), "cannot write GeoPackage");
    };
    const Pair seconds = TakeTurns(
        rounds_, [&] { WriteFile(File("ours"), write, borings_); },
        [&] { Insert(File("theirs.db"), blobs); });
    figures_.Add({"borings, GeoPackage", seconds.ours * 1e3, seconds.theirs * 1e3, "ms", "SQLite's inserts",
                  seconds.ratio, seconds.noise});
  }

  // The same rows in one transaction, without a journal.
  void Insert(const std::string& file, const std::vector<std::string>& blobs) const {
    std::filesystem::remove(file);
    sqlite3* database = nullptr;
    Require(sqlite3_open(file.c_str(), &database) == SQLITE_OK, "cannot open a database");
    const auto run = [&](const char* sql) {
      Require(sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sqlite3_errmsg(database));
    };
    run("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; CREATE TABLE borings(fid INTEGER PRIMARY KEY "
        "AUTOINCREMENT "
        "NOT NULL, geom POINT, id TEXT, level DOUBLE, station DOUBLE, offset DOUBLE, side TEXT, "
        "profile_level DOUBLE, "
        "difference DOUBLE, status TEXT, Metod TEXT); BEGIN");
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(database, "INSERT INTO borings VALUES(NULL, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)", -1,
                       &insert, nullptr);
    const auto text = [&](int at, const std::string& value) {
      sqlite3_bind_text(insert, at, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
    };
    for (size_t i = 0; i < blobs.size(); ++i) {
      const exchange::LocatedPoint& point = borings_.borings.points[i];
      sqlite3_bind_blob(insert, 1, blobs[i].data(), static_cast<int>(blobs[i].size()), SQLITE_STATIC);
      text(2, point.id);
      sqlite3_bind_double(insert, 3, *point.level);
      sqlite3_bind_double(insert, 4, *point.station);
      sqlite3_bind_double(insert, 5, *point.offset);
      sqlite3_bind_text(insert, 6, *point.offset < 0 ? "V" : "H", 1, SQLITE_STATIC);
      text(9, point.status);
      text(10, point.own[0]);
      Require(sqlite3_step(insert) == SQLITE_DONE, "cannot insert");
      sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    run("COMMIT");
    sqlite3_close(database);
  }

  FileSettings settings_;
  int rounds_;
  int count_;
  BenchFolder folder_;
  exchange::ExportInput road_;
  exchange::ExportInput borings_;
  Figures figures_;
};

}  // namespace
}  // namespace velmora::bench

int main(int argc, char** argv) {
  velmora::bench::FileSettings settings;
  if (!velmora::bench::ReadOptions(argc, argv, {{"--small", &settings.small}},
                                   {{"--json", &settings.json}, {"--folder", &settings.folder}})) {
    std::fprintf(stderr, "exchange_bench [--small] [--json FILE] [--folder DIR]\n");
    return 2;
  }
  return velmora::bench::ExchangeBench(settings).Run();
}
