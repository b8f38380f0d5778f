#include "velmora/platform/posix/registry_database.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <mutex>
#include <optional>

#include "velmora/platform/disk_hook.h"
#include "velmora/platform/posix/disk_calls.h"
#include "velmora/platform/posix/native_path.h"
#include "velmora/platform/posix/new_file.h"
#include "velmora/platform/registry_store.h"

namespace velmora {
namespace {

constexpr int kLongestWaitMs = 60'000;
constexpr int kLargestStored = 16 << 20;
constexpr int kApplicationId = 0x56'4C'52'47;  // "VLRG"
constexpr int kFormat = 1;

// A root is a parent number without a row. AUTOINCREMENT: an id is not reused, so that an open key that is
// deleted never becomes another key.
constexpr const char* kSchema = R"(
  PRAGMA application_id = 0x564C5247;
  PRAGMA user_version = 1;
  CREATE TABLE registry_key(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    parent INTEGER NOT NULL,
    folded TEXT NOT NULL,
    name TEXT NOT NULL,
    UNIQUE(parent, folded));
  CREATE TABLE registry_value(
    key INTEGER NOT NULL,
    folded TEXT NOT NULL,
    name TEXT NOT NULL,
    type INTEGER NOT NULL,
    data BLOB NOT NULL,
    PRIMARY KEY(key, folded)) WITHOUT ROWID;
)";

int ResultOf(int code) {
  switch (code & 0xFF) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
      return kRegistryDone;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return kRegistryBusy;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return kRegistryDenied;
    case SQLITE_CANTOPEN:
      return kRegistryCannotOpen;
    case SQLITE_IOERR:
      return kRegistryCannotRead;
    case SQLITE_FULL:
      return kRegistryDiskFull;
    case SQLITE_NOMEM:
      return kRegistryNoMemory;
    case SQLITE_TOOBIG:
      return kRegistryBadArgument;
    default:
      return kRegistryDamaged;
  }
}

// 0 when there is a file that is not empty.
int Examine(const std::string& path, struct stat* status) {
  if (path.empty()) return kRegistryCannotOpen;
  if (stat(path.c_str(), status) != 0)
    return errno == ENOENT || errno == ENOTDIR ? kRegistryNotFound
           : errno == EACCES                   ? kRegistryDenied
                                               : kRegistryCannotOpen;
  if (!S_ISREG(status->st_mode)) return kRegistryCannotOpen;
  return status->st_size == 0 ? kRegistryNotFound : kRegistryDone;
}

std::string FolderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

// False without a write bit, even for users who can override that.
bool MayWrite(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && (status.st_mode & 0222) != 0 && access(path.c_str(), W_OK) == 0;
}

// The name that opens a file nobody writes without SQLite's files beside it.
std::string ImmutableName(const std::string& path) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string name = "file:";
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                       (byte >= 'a' && byte <= 'z') || byte == '/' || byte == '.';
    if (plain) {
      name += c;
    } else {
      name += {'%', kDigits[byte >> 4], kDigits[byte & 0xFU]};
    }
  }
  return name + "?immutable=1";
}

// The content of a new file: no keys, and already in WAL mode, so that its first use needs no exclusive lock.
std::optional<std::string> EmptyDatabase() {
  sqlite3* database = nullptr;
  std::optional<std::string> image;
  if (sqlite3_open(":memory:", &database) == SQLITE_OK &&
      sqlite3_exec(database, kSchema, nullptr, nullptr, nullptr) == SQLITE_OK) {
    sqlite3_int64 size = 0;
    unsigned char* bytes = sqlite3_serialize(database, "main", &size, 0);
    constexpr size_t kWriteVersion = 18;  // in the header; the read version follows
    if (bytes != nullptr && size > 100) {
      image.emplace(reinterpret_cast<const char*>(bytes), static_cast<size_t>(size));
      (*image)[kWriteVersion] = (*image)[kWriteVersion + 1] = 2;
    }
    sqlite3_free(bytes);
  }
  sqlite3_close(database);
  return image;
}

// Creates the file in one step: no program sees it incomplete, and only one of several creates it.
int MakeFile(const std::string& path) {
  static std::mutex mutex;
  const std::lock_guard<std::mutex> one_at_a_time(mutex);
  struct stat status {};
  int found = Examine(path, &status);
  if (found != kRegistryNotFound) return found;
  if (!MakeFolders(FolderOf(path))) return kRegistryCannotWrite;
  PosixNewFile file;
  if (file.Begin(path, std::string(), 0666)) {
    // Another program may have created it before Begin() got the lock.
    found = Examine(path, &status);
    if (found != kRegistryNotFound) return found;
    // Logs of a deleted file must not be applied to the new one.
    for (const char* suffix : {"-wal", "-shm", "-journal"}) (void)RemoveFile(path + suffix);
    const std::optional<std::string> image = EmptyDatabase();
    if (!image) return kRegistryNoMemory;
    const NewFile::Existing existing =
        HasEntry(path) ? NewFile::Existing::kReplace : NewFile::Existing::kKeep;
    if (file.Write(*image) && file.Commit(existing)) return kRegistryDone;
  }
  found = Examine(path, &status);
  return found == kRegistryNotFound ? kRegistryCannotWrite : found;
}

}  // namespace

std::string RegistryFile() {
  const char* named = std::getenv("VELMORA_REGISTRY");
  if (named != nullptr && *named != '\0') return named;
  const std::string data = UserDataFolder();
  return data.empty() ? data : data + "/velmora/registry.db";
}

RegistryStatement::RegistryStatement(sqlite3* database, std::string_view sql) {
  Take(sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &statement_, nullptr));
}

RegistryStatement::~RegistryStatement() { sqlite3_finalize(statement_); }

void RegistryStatement::Take(int code) {
  if (result_ == kRegistryDone) result_ = ResultOf(code);
}

RegistryStatement& RegistryStatement::Bind(std::int64_t number) {
  Take(sqlite3_bind_int64(statement_, ++bound_, number));
  return *this;
}

RegistryStatement& RegistryStatement::BindText(std::string_view utf8) {
  Take(sqlite3_bind_text64(statement_, ++bound_, utf8.data(), utf8.size(), SQLITE_STATIC, SQLITE_UTF8));
  return *this;
}

RegistryStatement& RegistryStatement::BindBytes(std::string_view bytes) {
  // SQLite stores a null pointer as NULL.
  const char* data = bytes.empty() ? "" : bytes.data();
  Take(sqlite3_bind_blob64(statement_, ++bound_, data, bytes.size(), SQLITE_STATIC));
  return *this;
}

bool RegistryStatement::Next() {
  if (result_ != kRegistryDone) return false;
  const int code = sqlite3_step(statement_);
  Take(code);
  return code == SQLITE_ROW;
}

int RegistryStatement::Run() {
  while (Next()) {
  }
  return result_;
}

std::int64_t RegistryStatement::Number(int column) const { return sqlite3_column_int64(statement_, column); }

std::string_view RegistryStatement::Bytes(int column) const {
  const void* bytes = sqlite3_column_blob(statement_, column);
  const int size = sqlite3_column_bytes(statement_, column);
  if (bytes == nullptr || size <= 0) return {};
  return {static_cast<const char*>(bytes), static_cast<size_t>(size)};
}

RegistryDatabase::~RegistryDatabase() { Close(); }

void RegistryDatabase::Close() {
  sqlite3_close(database_);
  database_ = nullptr;
}

int RegistryDatabase::Connect(const std::string& path) {
  const std::string absolute = path.starts_with('/') ? path : "./" + path;
  const bool file_writable = MayWrite(absolute);
  const bool folder_writable = MayWrite(FolderOf(absolute));
  writable_ = file_writable && folder_writable;
  int flags = SQLITE_OPEN_NOMUTEX;
  std::string name = absolute;
  if (writable_) {
    // Also for reading, so that the log of a killed program is applied.
    flags |= SQLITE_OPEN_READWRITE;
  } else {
    flags |= SQLITE_OPEN_READONLY;
    if (!HasEntry(absolute + "-wal")) {
      flags |= SQLITE_OPEN_URI;
      name = ImmutableName(absolute);
    }
  }
  const int result = ResultOf(sqlite3_open_v2(name.c_str(), &database_, flags, nullptr));
  ReportOpened(absolute, result == kRegistryDone);
  return result == kRegistryDone ? Prepare() : result;
}

// The file may come from anywhere: nothing in it is executed, and other databases are refused.
int RegistryDatabase::Prepare() {
  sqlite3_busy_timeout(database_, kLongestWaitMs);
  sqlite3_limit(database_, SQLITE_LIMIT_LENGTH, kLargestStored);
  sqlite3_db_config(database_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(database_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(database_, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  sqlite3_db_config(database_, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
  // A commit survives a killed program; it survives a power cut after Flush.
  int result = RegistryStatement(database_, "PRAGMA synchronous = NORMAL").Run();
  const auto expect = [&](std::string_view question, int answer) {
    if (result != kRegistryDone) return;
    RegistryStatement statement(database_, question);
    if (!statement.Next() || statement.Number(0) != answer)
      result = statement.Result() != kRegistryDone ? statement.Result() : kRegistryDamaged;
  };
  expect("PRAGMA application_id", kApplicationId);
  expect("PRAGMA user_version", kFormat);
  return result;
}

int RegistryDatabase::Open(const std::string& path) {
  Close();
  struct stat status {};
  int result = Examine(path, &status);
  if (result == kRegistryDone) result = Connect(path);
  if (result != kRegistryDone) Close();
  return result;
}

int RegistryDatabase::OpenOrMake(const std::string& path) {
  int result = Open(path);
  if (result != kRegistryNotFound) return result;
  result = MakeFile(path);
  return result == kRegistryDone ? Open(path) : result;
}

// Commits are in the log, or were flushed by a checkpoint. A checkpoint here would wait for readers.
int RegistryDatabase::Flush() {
  sqlite3_file* log = nullptr;
  int code = sqlite3_file_control(database_, "main", SQLITE_FCNTL_JOURNAL_POINTER, static_cast<void*>(&log));
  if (code == SQLITE_OK && log != nullptr && log->pMethods != nullptr)
    code = log->pMethods->xSync(log, SQLITE_SYNC_NORMAL);
  return ResultOf(code);
}

RegistryTransaction::RegistryTransaction(const RegistryDatabase& database) : database_(database.Get()) {
  begun_ = database.IsWritable() ? RegistryStatement(database_, "BEGIN IMMEDIATE").Run() : kRegistryDenied;
  open_ = begun_ == kRegistryDone;
}

RegistryTransaction::~RegistryTransaction() {
  if (open_) RegistryStatement(database_, "ROLLBACK").Run();
}

int RegistryTransaction::Commit() {
  const int result = RegistryStatement(database_, "COMMIT").Run();
  if (result == kRegistryDone) open_ = false;
  return result;
}

}  // namespace velmora
