// The registry's file: finding it, making it, opening it, and the few things that need SQLite's own
// interface. Results are those of registry_store.h.
#ifndef VELMORA_PLATFORM_POSIX_REGISTRY_DATABASE_H_
#define VELMORA_PLATFORM_POSIX_REGISTRY_DATABASE_H_

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace velmora {

// The file that the environment names; empty when nobody's data folder is known.
std::string RegistryFile();

// A prepared statement with its parameters. What is bound must live until the statement ends.
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

  // Whether a row came. Afterwards Result tells why not: 0 when there is no more.
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

  // Opens what is there; never makes or changes it. kRegistryNotFound when there is nothing.
  int Open(const std::string& path);
  // Makes what is missing and opens it.
  int OpenOrMake(const std::string& path);

  bool IsOpen() const { return database_ != nullptr; }
  bool IsWritable() const { return writable_; }
  sqlite3* Get() const { return database_; }

  // Returns when everything is on the disk.
  int Flush();

 private:
  int Connect(const std::string& path);
  int Prepare();
  void Close();

  sqlite3* database_ = nullptr;
  bool writable_ = false;
};

// One write, all of it or nothing: what has not been committed at the end is undone.
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
