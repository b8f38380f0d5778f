#include "sql/sqlite/locate_table.h"

#include <algorithm>
#include <array>
#include <exception>
#include <new>
#include <optional>
#include <string>

#include "sql/sqlite/values.h"

namespace velmora::sql {
namespace {

enum Column { kStation, kOffset, kLevel, kStatus, kRoad, kNorthing, kEasting };
constexpr int kArguments = 3;  // from kRoad on

struct Table : sqlite3_vtab {
  std::shared_ptr<RoadCache> cache;
};

struct Cursor : sqlite3_vtab_cursor {
  bool at_end = true;
  std::shared_ptr<Road> road;  // null when an argument is null
  bool road_is_text = false;
  Point point{};
  LocateAnswer answer{};
};

int Fail(sqlite3_vtab* table, const std::string& text) {
  sqlite3_free(table->zErrMsg);
  table->zErrMsg = sqlite3_mprintf("velmora_locate: %s", text.c_str());
  return SQLITE_ERROR;
}

int Connect(sqlite3* database, void* cache, int, const char* const*, sqlite3_vtab** table, char**) {
  const int result =
      sqlite3_declare_vtab(database,
                           "CREATE TABLE x(station REAL, \"offset\" REAL, level REAL, status TEXT,"
                           " given_road HIDDEN, given_northing HIDDEN, given_easting HIDDEN)");
  if (result != SQLITE_OK) return result;
  sqlite3_vtab_config(database, SQLITE_VTAB_INNOCUOUS);
  Table* const made = new (std::nothrow) Table();
  if (made == nullptr) return SQLITE_NOMEM;
  made->cache = *static_cast<const std::shared_ptr<RoadCache>*>(cache);
  *table = made;
  return SQLITE_OK;
}

int Disconnect(sqlite3_vtab* table) {
  delete static_cast<Table*>(table);
  return SQLITE_OK;
}

int BestIndex(sqlite3_vtab* table, sqlite3_index_info* index) {
  std::array<std::optional<int>, kArguments> usable;
  std::array<bool, kArguments> given{};
  for (int i = 0; i < index->nConstraint; ++i) {
    const auto& constraint = index->aConstraint[i];
    if (constraint.iColumn < kRoad || constraint.op != SQLITE_INDEX_CONSTRAINT_EQ) continue;
    const auto argument = static_cast<size_t>(constraint.iColumn - kRoad);
    given[argument] = true;
    if (constraint.usable && !usable[argument]) usable[argument] = i;
  }
  for (size_t i = 0; i < kArguments; ++i) {
    if (!given[i]) return Fail(table, "needs three arguments: road, northing, easting");
    if (!usable[i]) return SQLITE_CONSTRAINT;  // another order of the joined tables
    auto& usage = index->aConstraintUsage[*usable[i]];
    usage.argvIndex = static_cast<int>(i) + 1;
    usage.omit = 1;
  }
  index->estimatedCost = 1;
  index->estimatedRows = 1;
  index->idxFlags = SQLITE_INDEX_SCAN_UNIQUE;
  return SQLITE_OK;
}

int Open(sqlite3_vtab*, sqlite3_vtab_cursor** cursor) {
  *cursor = new (std::nothrow) Cursor();
  return *cursor == nullptr ? SQLITE_NOMEM : SQLITE_OK;
}

int Close(sqlite3_vtab_cursor* cursor) {
  delete static_cast<Cursor*>(cursor);
  return SQLITE_OK;
}

int Filter(sqlite3_vtab_cursor* opened, int, const char*, int count, sqlite3_value** values) {
  Cursor& cursor = *static_cast<Cursor*>(opened);
  Table& table = *static_cast<Table*>(cursor.pVtab);
  cursor.at_end = false;
  cursor.road.reset();
  try {
    if (AnyNull(count, values)) return SQLITE_OK;
    cursor.point = {NumberOf(values[1], "northing"), NumberOf(values[2], "easting")};
    cursor.road_is_text = sqlite3_value_type(values[0]) == SQLITE_TEXT;
    const std::shared_ptr<Road> road = table.cache->Get(BytesOf(values[0]));
    cursor.answer = road->Locate(cursor.point.northing, cursor.point.easting);
    cursor.road = road;
    return SQLITE_OK;
  } catch (const Refusal& refusal) {
    return Fail(&table, refusal.text);
  } catch (const std::bad_alloc&) {
    return SQLITE_NOMEM;
  } catch (const std::exception& exception) {
    return Fail(&table, exception.what());
  }
}

int Next(sqlite3_vtab_cursor* cursor) {
  static_cast<Cursor*>(cursor)->at_end = true;
  return SQLITE_OK;
}

int AtEnd(sqlite3_vtab_cursor* cursor) { return static_cast<Cursor*>(cursor)->at_end; }

int Value(sqlite3_vtab_cursor* opened, sqlite3_context* context, int column) {
  const Cursor& cursor = *static_cast<const Cursor*>(opened);
  if (cursor.road == nullptr) return SQLITE_OK;
  try {
    const std::string& bytes = cursor.road->Bytes();
    if (column == kStation)
      sqlite3_result_double(context, cursor.answer.station);  // a NaN becomes null
    else if (column == kOffset)
      sqlite3_result_double(context, cursor.answer.offset);
    else if (column == kLevel)
      sqlite3_result_double(context, cursor.road->Level(cursor.answer.station));
    else if (column == kStatus)
      sqlite3_result_text(context, velmora_place_text(cursor.answer.result), -1, SQLITE_STATIC);
    else if (column == kNorthing)
      sqlite3_result_double(context, cursor.point.northing);
    else if (column == kEasting)
      sqlite3_result_double(context, cursor.point.easting);
    else if (cursor.road_is_text)
      sqlite3_result_text64(context, bytes.data(), bytes.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    else
      sqlite3_result_blob64(context, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
    return SQLITE_OK;
  } catch (const std::bad_alloc&) {
    return SQLITE_NOMEM;
  } catch (const Refusal& refusal) {
    return Fail(cursor.pVtab, refusal.text);
  }
}

int RowId(sqlite3_vtab_cursor*, sqlite3_int64* id) {
  *id = 1;
  return SQLITE_OK;
}

// Without xCreate the table is there without CREATE VIRTUAL TABLE, and only so.
sqlite3_module Module() {
  sqlite3_module module{};
  module.xConnect = Connect;
  module.xBestIndex = BestIndex;
  module.xDisconnect = Disconnect;
  module.xOpen = Open;
  module.xClose = Close;
  module.xFilter = Filter;
  module.xNext = Next;
  module.xEof = AtEnd;
  module.xColumn = Value;
  module.xRowid = RowId;
  return module;
}

}  // namespace

int RegisterLocateTable(sqlite3* database, const std::shared_ptr<RoadCache>& cache) {
  static const sqlite3_module module = Module();
  using Kept = std::shared_ptr<RoadCache>;
  return sqlite3_create_module_v2(database, "velmora_locate", &module, new Kept(cache),
                                  [](void* kept) { delete static_cast<Kept*>(kept); });
}

}  // namespace velmora::sql
