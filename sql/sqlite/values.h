// Arguments of SQL calls, for functions and tables alike.
#ifndef SQL_SQLITE_VALUES_H_
#define SQL_SQLITE_VALUES_H_

#include <sqlite3ext.h>

#include <exception>
#include <new>
#include <string>
#include <string_view>

#include "sql/sqlite/road_cache.h"

SQLITE_EXTENSION_INIT3

namespace velmora::sql {

// The bytes of a text, in UTF-8, or of a blob. Throws Refusal for a number; the value must not be null.
std::string_view BytesOf(sqlite3_value* value);
// Throws Refusal for what is not a number; the value must not be null.
double NumberOf(sqlite3_value* value, const char* what);

bool AnyNull(int count, sqlite3_value** values);

// Runs the body of a function unless an argument is null, and then the result is null; what the body throws
// becomes an error of SQL.
template <class Body>
void Answer(sqlite3_context* context, const char* name, int count, sqlite3_value** values, Body body) {
  try {
    if (!AnyNull(count, values)) body();
  } catch (const Refusal& refusal) {
    char* const message = sqlite3_mprintf("%s: %s", name, refusal.text.c_str());
    if (message == nullptr) return sqlite3_result_error_nomem(context);
    sqlite3_result_error(context, message, -1);
    sqlite3_free(message);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  } catch (const std::exception& exception) {
    sqlite3_result_error(context, exception.what(), -1);
  }
}

}  // namespace velmora::sql

#endif  // SQL_SQLITE_VALUES_H_
