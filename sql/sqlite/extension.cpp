// The functions of the extension, and how it is loaded.
#include <memory>
#include <new>
#include <string>

#include "sql/sqlite/locate_table.h"
#include "sql/sqlite/read_road.h"
#include "sql/sqlite/road_cache.h"
#include "sql/sqlite/values.h"
#include "velmora/portability.h"

SQLITE_EXTENSION_INIT1

namespace velmora::sql {
namespace {

struct Function {
  const char* name;
  int arguments;
  const char* first;  // what the arguments after the road are
  const char* second;
  void (*answer)(sqlite3_context* context, Road& road, double first, double second);
};

// A NaN becomes null.
void Give(sqlite3_context* context, double value) { sqlite3_result_double(context, value); }

void GiveFindings(sqlite3_context* context, const Road& road) {
  const std::string findings = road.Findings();
  if (!findings.empty()) sqlite3_result_text(context, findings.c_str(), -1, SQLITE_TRANSIENT);
}

using Context = sqlite3_context*;
const Function kFunctions[] = {
    {"velmora_station", 3, "northing", "easting",
     [](Context c, Road& road, double n, double e) { Give(c, road.Locate(n, e).station); }},
    {"velmora_offset", 3, "northing", "easting",
     [](Context c, Road& road, double n, double e) { Give(c, road.Locate(n, e).offset); }},
    {"velmora_level", 3, "northing", "easting",
     [](Context c, Road& road, double n, double e) { Give(c, road.Level(road.Locate(n, e).station)); }},
    {"velmora_level", 2, "station", nullptr,
     [](Context c, Road& road, double station, double) { Give(c, road.Level(station)); }},
    {"velmora_northing", 3, "station", "offset",
     [](Context c, Road& road, double s, double o) { Give(c, road.PointAt(s, o).northing); }},
    {"velmora_easting", 3, "station", "offset",
     [](Context c, Road& road, double s, double o) { Give(c, road.PointAt(s, o).easting); }},
    {"velmora_findings", 1, nullptr, nullptr,
     [](Context c, Road& road, double, double) { GiveFindings(c, road); }},
};

// What a registered function keeps.
struct Registered {
  const Function* function;
  std::shared_ptr<RoadCache> cache;
};

// SQLite keeps the road of an argument that is the same for all rows; of others the cache does.
std::shared_ptr<Road> RoadOf(sqlite3_context* context, sqlite3_value* value, RoadCache& cache) {
  using Kept = std::shared_ptr<Road>;
  if (const void* const kept = sqlite3_get_auxdata(context, 0)) return *static_cast<const Kept*>(kept);
  std::shared_ptr<Road> road = cache.Get(BytesOf(value));
  sqlite3_set_auxdata(context, 0, new Kept(road), [](void* kept) { delete static_cast<Kept*>(kept); });
  return road;
}

void Call(sqlite3_context* context, int count, sqlite3_value** values) {
  const auto& [function, cache] = *static_cast<const Registered*>(sqlite3_user_data(context));
  Answer(context, function->name, count, values, [&, &function = function, &cache = cache] {
    const double first = count > 1 ? NumberOf(values[1], function->first) : 0;
    const double second = count > 2 ? NumberOf(values[2], function->second) : 0;
    const std::shared_ptr<Road> road = RoadOf(context, values[0], *cache);
    function->answer(context, *road, first, second);
  });
}

int Register(sqlite3* database, bool files) noexcept {
  try {
    const auto cache = std::make_shared<RoadCache>();
    constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    for (const Function& function : kFunctions) {
      const int result = sqlite3_create_function_v2(
          database, function.name, function.arguments, kFlags, new Registered{&function, cache}, Call,
          nullptr, nullptr, [](void* registered) { delete static_cast<Registered*>(registered); });
      if (result != SQLITE_OK) return result;
    }
    const int result = RegisterLocateTable(database, cache);
    return result == SQLITE_OK ? RegisterReadRoad(database, files) : result;
  } catch (const std::bad_alloc&) {
    return SQLITE_NOMEM;
  }
}

}  // namespace
}  // namespace velmora::sql

// The names are those that SQLite makes of the file's, and one for hosts that let SQL read files.
extern "C" {
VELMORA_SYMBOL_EXPORT int sqlite3_modvelmora_init(sqlite3* database, char**, const sqlite3_api_routines* api);
VELMORA_SYMBOL_EXPORT int sqlite3_velmora_files_init(sqlite3* database, char**,
                                                     const sqlite3_api_routines* api);
}

int sqlite3_modvelmora_init(sqlite3* database, char**, const sqlite3_api_routines* api) {
  SQLITE_EXTENSION_INIT2(api)
  return velmora::sql::Register(database, false);
}

int sqlite3_velmora_files_init(sqlite3* database, char**, const sqlite3_api_routines* api) {
  SQLITE_EXTENSION_INIT2(api)
  return velmora::sql::Register(database, true);
}
