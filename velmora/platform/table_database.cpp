#include "velmora/platform/table_database.h"

#include <sqlite3.h>

#include "velmora/platform/disk_hook.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

constexpr int kLargestCell = 256 << 20;  // bytes
constexpr sqlite3_int64 kLargestMade = sqlite3_int64{1} << 36;

}  // namespace

struct TableDatabase::System {
  sqlite3* database = nullptr;
};

struct TableStatement::System {
  sqlite3_stmt* statement = nullptr;
  int bound = 0;
};

TableDatabase::TableDatabase() : system_(std::make_unique<System>()) {}
TableDatabase::~TableDatabase() { sqlite3_close(system_->database); }

bool TableDatabase::IsAvailable() { return true; }

bool TableDatabase::Take(int code) {
  if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE) return error_.empty();
  if (error_.empty())
    error_ = system_->database != nullptr ? sqlite3_errmsg(system_->database) : sqlite3_errstr(code);
  return false;
}

bool TableDatabase::Make() {
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  // In one piece of memory, which can be handed over without a copy. A name without a slash is not shared.
  if (!Take(sqlite3_open_v2("database", &system_->database, flags, "memdb"))) return false;
  sqlite3_int64 limit = kLargestMade;
  sqlite3_file_control(system_->database, "main", SQLITE_FCNTL_SIZE_LIMIT, &limit);
  // Nothing is rolled back: a database that failed is not handed over.
  return Run("PRAGMA journal_mode = OFF");
}

bool TableDatabase::OpenToRead(const CString& path) {
  const std::optional<CString> real = RealPath(path);
  if (!real) return Take(SQLITE_CANTOPEN);
  const int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX;
  const std::string name = PathForDisplay(*real);
  const bool done = Take(sqlite3_open_v2(name.c_str(), &system_->database, flags, nullptr));
  ReportOpened(std::filesystem::path(std::u8string(name.begin(), name.end())), done);
  if (!done) return false;
  sqlite3_limit(system_->database, SQLITE_LIMIT_LENGTH, kLargestCell);
  sqlite3_db_config(system_->database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(system_->database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(system_->database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  sqlite3_db_config(system_->database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
  return true;
}

bool TableDatabase::Run(const std::string& sql) {
  return error_.empty() && Take(sqlite3_exec(system_->database, sql.c_str(), nullptr, nullptr, nullptr));
}

bool TableDatabase::HandOver(const std::function<void(std::string_view)>& write) {
  if (!error_.empty()) return false;
  sqlite3_int64 size = 0;
  unsigned char* bytes = sqlite3_serialize(system_->database, "main", &size, SQLITE_SERIALIZE_NOCOPY);
  if (bytes == nullptr) return Take(SQLITE_NOMEM);
  write({reinterpret_cast<const char*>(bytes), static_cast<size_t>(size)});
  return true;
}

TableStatement::TableStatement(TableDatabase* database, const std::string& sql)
    : database_(*database), system_(std::make_unique<System>()) {
  if (database_.error_.empty())
    database_.Take(sqlite3_prepare_v2(database_.system_->database, sql.c_str(), static_cast<int>(sql.size()),
                                      &system_->statement, nullptr));
}

TableStatement::~TableStatement() { sqlite3_finalize(system_->statement); }

TableStatement& TableStatement::Bind(std::optional<double> number) {
  const int at = ++system_->bound;
  database_.Take(number ? sqlite3_bind_double(system_->statement, at, *number)
                        : sqlite3_bind_null(system_->statement, at));
  return *this;
}

TableStatement& TableStatement::BindInteger(std::int64_t number) {
  database_.Take(sqlite3_bind_int64(system_->statement, ++system_->bound, number));
  return *this;
}

TableStatement& TableStatement::BindText(std::string_view utf8) {
  // SQLite stores a null pointer as NULL.
  const char* data = utf8.empty() ? "" : utf8.data();
  database_.Take(sqlite3_bind_text64(system_->statement, ++system_->bound, data, utf8.size(), SQLITE_STATIC,
                                     SQLITE_UTF8));
  return *this;
}

TableStatement& TableStatement::BindBytes(std::string_view bytes) {
  const char* data = bytes.empty() ? "" : bytes.data();
  database_.Take(
      sqlite3_bind_blob64(system_->statement, ++system_->bound, data, bytes.size(), SQLITE_STATIC));
  return *this;
}

bool TableStatement::Next() {
  if (!database_.error_.empty() || system_->statement == nullptr) return false;
  const int code = sqlite3_step(system_->statement);
  database_.Take(code);
  return code == SQLITE_ROW;
}

bool TableStatement::Run() {
  while (Next()) {
  }
  sqlite3_reset(system_->statement);
  system_->bound = 0;
  return database_.error_.empty();
}

int TableStatement::Columns() const { return sqlite3_column_count(system_->statement); }

std::string TableStatement::ColumnName(int column) const {
  const char* name = sqlite3_column_name(system_->statement, column);
  return name != nullptr ? name : "";
}

TableStatement::Kind TableStatement::KindOf(int column) const {
  switch (sqlite3_column_type(system_->statement, column)) {
    case SQLITE_INTEGER:
      return Kind::kInteger;
    case SQLITE_FLOAT:
      return Kind::kReal;
    case SQLITE_TEXT:
      return Kind::kText;
    case SQLITE_BLOB:
      return Kind::kBytes;
    default:
      return Kind::kNull;
  }
}

double TableStatement::Number(int column) const { return sqlite3_column_double(system_->statement, column); }
std::int64_t TableStatement::Integer(int column) const {
  return sqlite3_column_int64(system_->statement, column);
}

std::string_view TableStatement::Bytes(int column) const {
  const void* bytes = sqlite3_column_blob(system_->statement, column);
  const int size = sqlite3_column_bytes(system_->statement, column);
  if (bytes == nullptr || size <= 0) return {};
  return {static_cast<const char*>(bytes), static_cast<size_t>(size)};
}

}  // namespace velmora
