#include "sql/sqlite/values.h"

#include <algorithm>

namespace velmora::sql {

std::string_view BytesOf(sqlite3_value* value) {
  const int type = sqlite3_value_type(value);
  if (type != SQLITE_TEXT && type != SQLITE_BLOB)
    throw Refusal{"the road is a number; give the content of an alignment file, as text or as a blob"};
  const void* const bytes = type == SQLITE_TEXT ? sqlite3_value_text(value) : sqlite3_value_blob(value);
  const int size = sqlite3_value_bytes(value);
  if (bytes == nullptr && (size > 0 || type == SQLITE_TEXT)) throw std::bad_alloc();
  return {static_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

double NumberOf(sqlite3_value* value, const char* what) {
  const int type = sqlite3_value_numeric_type(value);
  if (type == SQLITE_INTEGER || type == SQLITE_FLOAT) return sqlite3_value_double(value);
  if (type == SQLITE_BLOB) throw Refusal{std::string(what) + " is a blob, not a number"};
  const std::string_view text = BytesOf(value);
  std::size_t shown = std::min<std::size_t>(text.size(), 40);
  while (shown > 0 && shown < text.size() && (text[shown] & 0xC0) == 0x80) --shown;  // whole letters
  throw Refusal{std::string(what) + " \"" + std::string(text.substr(0, shown)) + "\" is not a number"};
}

bool AnyNull(int count, sqlite3_value** values) {
  return std::any_of(values, values + count,
                     [](sqlite3_value* value) { return sqlite3_value_type(value) == SQLITE_NULL; });
}

}  // namespace velmora::sql
