// SQLite databases as files of tables: made in memory and handed over as bytes, so that a file is written in
// one step (FileReplacement), or opened to be read.
//
// Texts are UTF-8. After one failure all later calls of the same object fail; Error says why.
#ifndef VELMORA_PLATFORM_TABLE_DATABASE_H_
#define VELMORA_PLATFORM_TABLE_DATABASE_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/text/string.h"

namespace velmora {

class TableScan;
class TableStatement;

class TableDatabase {
 public:
  TableDatabase();
  ~TableDatabase();
  TableDatabase(const TableDatabase&) = delete;
  TableDatabase& operator=(const TableDatabase&) = delete;

  // False where the library was built without SQLite, as on Windows by default; the others then fail.
  static bool IsAvailable();

  // An empty database in memory.
  [[nodiscard]] bool Make();
  // A file, which may come from anywhere: nothing in it is executed, and its views cannot be read.
  [[nodiscard]] bool OpenToRead(const CString& path);

  // Any number of statements that give no rows.
  bool Run(const std::string& sql);
  // The bytes of the whole database, to be written as a file.
  [[nodiscard]] bool HandOver(const std::function<void(std::string_view)>& write);

  const std::string& Error() const { return error_; }

 private:
  friend class TableScan;
  friend class TableStatement;
  struct System;
  bool Take(int code);

  std::unique_ptr<System> system_;
  std::string error_;
};

// A value of a row.
struct TableCell {
  enum class Kind { kNull, kInteger, kReal, kText, kBytes };
  Kind kind = Kind::kNull;
  std::int64_t integer = 0;  // the values of the other kinds are empty
  double number = 0;
  std::string_view bytes;  // of a text or of bytes; valid until the row is left
};

// A prepared statement.
class TableStatement {
 public:
  TableStatement(TableDatabase* database, const std::string& sql);
  ~TableStatement();
  TableStatement(const TableStatement&) = delete;
  TableStatement& operator=(const TableStatement&) = delete;

  // Parameters in their order; texts and bytes must live until Next or Run. Nothing is NULL.
  TableStatement& Bind(std::optional<double> number);
  TableStatement& BindInteger(std::int64_t number);
  TableStatement& BindText(std::string_view utf8);
  TableStatement& BindBytes(std::string_view bytes);

  // False when there is no further row, or after a failure of the database.
  bool Next();
  // For a statement that gives no rows, which can then be bound anew.
  bool Run();

  int Columns() const;
  std::string ColumnName(int column) const;
  TableCell Cell(int column) const;

 private:
  struct System;
  [[maybe_unused]] TableDatabase& database_;  // not where there is no SQLite
  std::unique_ptr<System> system_;
};

// Goes through a table's rows in its own order, in about half the time of a TableStatement: SQLite hands over
// the cells as it comes to them and returns only where it is asked to. One at a time for a database.
class TableScan {
 public:
  // Called for a row's cells, from that of the expression `first` on: for all at once, unless there are very
  // many. They are valid during the call. True at the last one: Next returns behind this row.
  using Take = std::function<bool(size_t first, std::span<const TableCell> cells)>;
  // Expressions are column names in quotes, or "rowid".
  TableScan(TableDatabase* database, const std::string& table, const std::vector<std::string>& expressions,
            Take take);
  ~TableScan();
  TableScan(const TableScan&) = delete;
  TableScan& operator=(const TableScan&) = delete;

  // False when there is no further row, or after a failure of the database.
  bool Next();

 private:
  struct System;
  std::unique_ptr<System> system_;
};

// The name of a table or column within a statement.
inline std::string QuotedSqlName(std::string_view name) {
  std::string quoted = "\"";
  for (const char c : name) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

}  // namespace velmora

#endif  // VELMORA_PLATFORM_TABLE_DATABASE_H_
