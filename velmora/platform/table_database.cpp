#include "velmora/platform/table_database.h"

#include <sqlite3.h>

#include "velmora/platform/disk_hook.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

constexpr int kLargestCell = 256 << 20;  // bytes
constexpr sqlite3_int64 kLargestMade = sqlite3_int64{1} << 36;

TableCell CellOf(sqlite3_value* value) {
  TableCell cell;
  const auto bytes = [&](const void* data) {
    const int size = sqlite3_value_bytes(value);
    if (data == nullptr || size <= 0) return std::string_view();
    return std::string_view(static_cast<const char*>(data), static_cast<size_t>(size));
  };
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      cell.kind = TableCell::Kind::kInteger;
      cell.integer = sqlite3_value_int64(value);
      break;
    case SQLITE_FLOAT:
      cell.kind = TableCell::Kind::kReal;
      cell.number = sqlite3_value_double(value);
      break;
    case SQLITE_TEXT:
      // As UTF-8, also of a database in UTF-16, before its size is asked for.
      cell.kind = TableCell::Kind::kText;
      cell.bytes = bytes(sqlite3_value_text(value));
      break;
    case SQLITE_BLOB:
      cell.kind = TableCell::Kind::kBytes;
      cell.bytes = bytes(sqlite3_value_blob(value));
      break;
    default:
      break;
  }
  return cell;
}

constexpr char kTakeCells[] = "velmora_cells";
constexpr size_t kMostCells = 99;  // of a call; a function may have 100 arguments at least

}  // namespace

struct TableDatabase::System {
  sqlite3* database = nullptr;
};

struct TableScan::System {
  Take take;
  std::vector<TableCell> cells;  // of a call
  std::optional<TableStatement> rows;

  // velmora_cells(first, cell, ...): hands the cells over; 1 where Next is to return.
  static void TakeCells(sqlite3_context* context, int count, sqlite3_value** values) {
    auto& scan = *static_cast<System*>(sqlite3_user_data(context));
    try {
      const auto first = static_cast<size_t>(sqlite3_value_int64(*values));
      scan.cells.resize(static_cast<size_t>(count) - 1);
      for (TableCell& cell : scan.cells) cell = CellOf(*++values);
      sqlite3_result_int(context, scan.take(first, scan.cells) ? 1 : 0);
    } catch (const std::exception&) {  // does not pass through SQLite
      sqlite3_result_error_nomem(context);
    }
  }
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

TableCell TableStatement::Cell(int column) const {
  // One thread at a time uses the database, so that the value may be read.
  return CellOf(sqlite3_column_value(system_->statement, column));
}

TableScan::TableScan(TableDatabase* database, const std::string& table,
                     const std::vector<std::string>& expressions, Take take)
    : system_(std::make_unique<System>()) {
  system_->take = std::move(take);
  if (!database->error_.empty()) return;
  // Not for the file's own expressions.
  database->Take(sqlite3_create_function(database->system_->database, kTakeCells, -1,
                                         SQLITE_UTF8 | SQLITE_DIRECTONLY, system_.get(), System::TakeCells,
                                         nullptr, nullptr));
  // The sum's calls are made from left to right.
  std::string condition;
  for (size_t i = 0; i < expressions.size(); ++i) {
    if (i % kMostCells == 0)
      condition += (i == 0 ? "" : ") + ") + std::string(kTakeCells) + "(" + std::to_string(i);
    condition += ", " + expressions[i];
  }
  system_->rows.emplace(database, "SELECT 1 FROM " + QuotedSqlName(table) + " WHERE " + condition + ")");
}

TableScan::~TableScan() = default;

bool TableScan::Next() { return system_->rows && system_->rows->Next(); }

}  // namespace velmora
