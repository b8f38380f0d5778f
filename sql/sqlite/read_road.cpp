#include "sql/sqlite/read_road.h"

#include <array>
#include <charconv>
#include <initializer_list>
#include <string>
#include <vector>

#include "sql/sqlite/road_cache.h"
#include "sql/sqlite/values.h"

namespace velmora::sql {
namespace {

constexpr const char* kName = "velmora_read";

// All digits of the numbers, without exponents, which alignment files do not have.
void AppendNumbers(std::initializer_list<double> numbers, std::string* line) {
  std::array<char, 400> room;  // 309 digits before the point, or 323 zeros after it and 17 digits
  for (const double number : numbers) {
    if (!line->empty() && line->back() != '\n') *line += ' ';
    const auto end = std::to_chars(room.data(), room.data() + room.size(), number, std::chars_format::fixed);
    line->append(room.data(), end.ptr);
  }
}

// The letters that Latin-1 and Windows-1252 share, as in an alignment file; "_" for others.
std::string NameForFile(std::string_view utf8) {
  std::string name;
  for (size_t i = 0; i < utf8.size(); ++i) {
    const auto c = static_cast<unsigned char>(utf8[i]);
    if (c >= 0x80 && c < 0xC0) continue;  // the rest of a letter
    const bool pair = (c == 0xC2 || c == 0xC3) && i + 1 < utf8.size();
    const unsigned letter = pair ? (c & 3U) << 6 | (static_cast<unsigned char>(utf8[i + 1]) & 0x3FU) : c;
    const bool fits = letter >= ' ' && letter != '$' && (pair ? letter >= 0xA0 : letter < 0x7F);
    name += fits ? static_cast<char>(letter) : '_';
  }
  return name;
}

std::string FileOf(const velmora_road* road) {
  std::vector<velmora_plan_point> plan(velmora_road_plan(road, nullptr, 0));
  velmora_road_plan(road, plan.data(), plan.size());
  std::vector<velmora_profile_point> profile(velmora_road_profile(road, nullptr, 0));
  velmora_road_profile(road, profile.data(), profile.size());
  std::string file;
  for (const velmora_plan_point& point : plan) {
    const bool first = file.empty();
    AppendNumbers({point.northing, point.easting, point.bulge, point.station}, &file);
    if (first) file += " 1 $" + NameForFile(velmora_road_name(road));
    file += "\r\n";
  }
  if (!profile.empty()) file += "*\r\nProfil\r\n*\r\n";
  for (const velmora_profile_point& point : profile) {
    AppendNumbers({point.level, point.station, point.bulge}, &file);
    file += "\r\n";
  }
  return file;
}

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
    const std::string file = FileOf(road);
    sqlite3_result_blob64(context, file.data(), file.size(), SQLITE_TRANSIENT);
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
