// The registry's database file: its path, creating and opening it, statements and transactions. Results are
// those of registry_store.h.
#ifndef VELMORA_PLATFORM_POSIX_REGISTRY_DATABASE_H_
#define VELMORA_PLATFORM_POSIX_REGISTRY_DATABASE_H_

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace velmora {

// A prepared statement. Bound texts must outlive it.
class RegistryStatement {
 public:
  RegistryStatement(sqlite3* database, std::string_view sql);
  RegistryStatement(const RegistryStatement&) = delete;
  RegistryStatement& operator=(const RegistryStatement&) = delete;
  ~RegistryStatement();

  // Parameters in their order.
  RegistryStatement& Bind(std::int64_t number);
  RegistryStatement& BindText(std::string_view utf8);
  RegistryStatement& BindBytes(std::string_view bytes);

  // False when there is no further row: Result is then 0 or an error.
  bool Next();
  int Result() const { return result_; }
  // For a statement that gives no rows.
  int Run();

  std::int64_t Number(int column) const;
  // Valid until the next call of Next.
  std::string_view Bytes(int column) const;

 private:
  void Take(int code);

  sqlite3_stmt* statement_ = nullptr;
  int result_ = 0;
  int bound_ = 0;
};

// An open database.
class RegistryDatabase {
 public:
  RegistryDatabase() = default;
  RegistryDatabase(const RegistryDatabase&) = delete;
  RegistryDatabase& operator=(const RegistryDatabase&) = delete;
  ~RegistryDatabase();

  // Opens an existing file without changing it; kRegistryNotFound when it is missing or empty.
  int Open(const std::string& path);
  // Creates a missing file and opens it.
  int OpenOrMake(const std::string& path);

  bool IsOpen() const { return database_ != nullptr; }
  bool IsWritable() const { return writable_; }
  sqlite3* Get() const { return database_; }

  // Flushes everything committed to the disk.
  int Flush();

 private:
  int Connect(const std::string& path);
  int Prepare();
  void Close();

  sqlite3* database_ = nullptr;
  bool writable_ = false;
};

// Rolls back at the end unless committed.
class RegistryTransaction {
 public:
  explicit RegistryTransaction(const RegistryDatabase& database);
  RegistryTransaction(const RegistryTransaction&) = delete;
  RegistryTransaction& operator=(const RegistryTransaction&) = delete;
  ~RegistryTransaction();

  int Begun() const { return begun_; }
  int Commit();

 private:
  sqlite3* database_;
  int begun_ = 0;
  bool open_ = false;
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_REGISTRY_DATABASE_H_
