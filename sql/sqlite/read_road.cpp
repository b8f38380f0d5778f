#include "sql/sqlite/read_road.h"

#include <string>

#include "sql/sqlite/road_cache.h"
#include "sql/sqlite/values.h"

namespace velmora::sql {
namespace {

constexpr const char* kName = "velmora_read";

std::string TextOf(sqlite3_value* value) {
  std::string text(BytesOf(value));
  if (text.find('\0') != std::string::npos) throw Refusal{"the name of a file has a zero byte"};
  return text;
}

void Read(sqlite3_context* context, int count, sqlite3_value** values) {
  Answer(context, kName, count, values, [&] {
    if (sqlite3_user_data(context) == nullptr)
      throw Refusal{
          "files are not allowed here; a host allows them by loading the extension with the entry point "
          "sqlite3_velmora_files_init"};
    const std::string path = TextOf(values[0]);
    const std::string name = count > 1 ? TextOf(values[1]) : "";
    velmora_read_options options = VELMORA_READ_OPTIONS_INIT;
    if (count > 1) options.name = name.c_str();
    velmora_road* road;
    velmora_error error;
    Check(velmora_road_read(path.c_str(), &options, &road, &error), error);
    const RoadHandle handle(road);
    char* bytes;
    size_t size;
    Check(velmora_road_text(road, &bytes, &size, VELMORA_FORCE, &error), error);
    sqlite3_result_blob64(context, bytes, size, velmora_free);
  });
}

}  // namespace

int RegisterReadRoad(sqlite3* database, bool files) {
  // Deterministic within a statement, so that a constant path is read once for all rows.
  constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
  void* const allowed = files ? database : nullptr;  // any pointer but null
  const int result = sqlite3_create_function(database, kName, 1, kFlags, allowed, Read, nullptr, nullptr);
  if (result != SQLITE_OK) return result;
  return sqlite3_create_function(database, kName, 2, kFlags, allowed, Read, nullptr, nullptr);
}

}  // namespace velmora::sql
