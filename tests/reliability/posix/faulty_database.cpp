// SQLite's own file system whose opening, reading, writing, truncating, flushing and removing pass the faulty
// disk. The memory that programs share beside a database is not on the disk.
#include "tests/reliability/faulty_disk.h"

#include <sqlite3.h>

#include <filesystem>
#include <new>

namespace velmora::testing {
namespace {

FaultyDisk* the_disk = nullptr;
sqlite3_vfs* the_system = nullptr;

// Stands behind the system's own file object, whose table of methods is replaced by `methods`.
struct Extra {
  const sqlite3_io_methods* system;
  sqlite3_io_methods methods;
  const char* path;  // SQLite keeps it until the file is closed
  bool flush_folder;
};

Extra& ExtraOf(sqlite3_file* file) {
  return *reinterpret_cast<Extra*>(reinterpret_cast<char*>(file) + the_system->szOsFile);
}

// The result that stands for the injected error, or that of the call. *count bytes are to be written.
// An interrupted call is made again, as SQLite's own file system does.
template <class Call>
int Hooked(DiskAction action, const char* path, std::string_view bytes, int failure, Call call) {
  size_t count = bytes.size();
  if (the_disk == nullptr || path == nullptr) return call(count);
  const DiskCall described{.action = action, .path = path, .new_path = {}, .bytes = bytes};
  InjectedError error = the_disk->Before(described, &count);
  if (error == InjectedError::kTransient) error = the_disk->Before(described, &count);
  if (error == InjectedError::kFull) return SQLITE_FULL;
  if (error != InjectedError::kNone) return failure;
  const int result = call(count);
  if (action != DiskAction::kWrite) the_disk->After(described, result == SQLITE_OK);
  return result;
}

int FlushFolder(const char* path) {
  const std::string folder = std::filesystem::path(path).parent_path();
  return Hooked(DiskAction::kFlushFolder, folder.c_str(), {}, SQLITE_IOERR_DIR_FSYNC,
                [](size_t) { return SQLITE_OK; });
}

void Wrote(const char* path, std::string_view bytes, sqlite3_int64 offset, bool truncates) {
  if (the_disk != nullptr && path != nullptr)
    the_disk->Wrote(path, bytes, static_cast<size_t>(offset), truncates);
}

int Read(sqlite3_file* file, void* buffer, int size, sqlite3_int64 offset) {
  const Extra& extra = ExtraOf(file);
  return Hooked(DiskAction::kRead, extra.path, {}, SQLITE_IOERR_READ,
                [&](size_t) { return extra.system->xRead(file, buffer, size, offset); });
}

int Write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset) {
  const Extra& extra = ExtraOf(file);
  std::string_view rest(static_cast<const char*>(bytes), static_cast<size_t>(size));
  int result = SQLITE_OK;
  while (result == SQLITE_OK && !rest.empty())  // a write may fall short
    result = Hooked(DiskAction::kWrite, extra.path, rest, SQLITE_IOERR_WRITE, [&](size_t count) {
      const int written = extra.system->xWrite(file, rest.data(), static_cast<int>(count), offset);
      if (written == SQLITE_OK) Wrote(extra.path, rest.substr(0, count), offset, false);
      rest.remove_prefix(count);
      offset += static_cast<sqlite3_int64>(count);
      return written;
    });
  return result;
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
  const Extra& extra = ExtraOf(file);
  return Hooked(DiskAction::kWrite, extra.path, {}, SQLITE_IOERR_TRUNCATE, [&](size_t) {
    const int result = extra.system->xTruncate(file, size);
    if (result == SQLITE_OK) Wrote(extra.path, {}, size, true);
    return result;
  });
}

int Sync(sqlite3_file* file, int flags) {
  Extra& extra = ExtraOf(file);
  const int result = Hooked(DiskAction::kFlush, extra.path, {}, SQLITE_IOERR_FSYNC,
                            [&](size_t) { return extra.system->xSync(file, flags); });
  if (result != SQLITE_OK || !extra.flush_folder) return result;
  extra.flush_folder = false;
  return FlushFolder(extra.path);
}

int Open(sqlite3_vfs* /*vfs*/, const char* path, sqlite3_file* file, int flags, int* out_flags) {
  const bool makes = path != nullptr && (flags & SQLITE_OPEN_CREATE) != 0 && !std::filesystem::exists(path);
  file->pMethods = nullptr;
  const int result =
      Hooked(makes ? DiskAction::kCreate : DiskAction::kOpenToRead, path, {}, SQLITE_CANTOPEN,
             [&](size_t) { return the_system->xOpen(the_system, path, file, flags, out_flags); });
  if (file->pMethods == nullptr) return result;
  Extra* const extra = new (&ExtraOf(file))
      Extra{.system = file->pMethods,
            .methods = *file->pMethods,
            .path = path,
            .flush_folder = makes && (flags & (SQLITE_OPEN_WAL | SQLITE_OPEN_MAIN_JOURNAL)) != 0};
  extra->methods.iVersion = 2;  // without mapped memory
  extra->methods.xRead = Read;
  extra->methods.xWrite = Write;
  extra->methods.xTruncate = Truncate;
  extra->methods.xSync = Sync;
  file->pMethods = &extra->methods;
  return result;
}

int Delete(sqlite3_vfs* /*vfs*/, const char* path, int flush_folder) {
  if (!std::filesystem::exists(path)) return SQLITE_IOERR_DELETE_NOENT;
  const int result = Hooked(DiskAction::kRemove, path, {}, SQLITE_IOERR_DELETE,
                            [&](size_t) { return the_system->xDelete(the_system, path, 0); });
  return result == SQLITE_OK && flush_folder != 0 ? FlushFolder(path) : result;
}

}  // namespace

DiskPromises Promises() {
  return {.database_is_a_file = true, .folders_are_flushed = true, .denials_are_waited_for = false};
}

void SetDiskOfDatabases(FaultyDisk* disk) {
  the_disk = disk;
  if (the_system != nullptr) return;
  the_system = sqlite3_vfs_find(nullptr);
  static sqlite3_vfs ours = *the_system;
  ours.zName = "faulty";
  ours.szOsFile = the_system->szOsFile + static_cast<int>(sizeof(Extra));
  ours.xOpen = Open;
  ours.xDelete = Delete;
  sqlite3_vfs_register(&ours, 1);
}

}  // namespace velmora::testing
