// A file system for SQLite that is the system's own, with the faulty disk before it. The memory that
// programs share beside a database is not on the disk.
#include "tests/reliability/faulty_database.h"

#include <sqlite3.h>

#include <cstring>
#include <filesystem>
#include <new>

namespace velmora::testing {
namespace {

constexpr int kMostInterruptions = 1000;

FaultyDisk* the_disk = nullptr;
sqlite3_vfs* the_system = nullptr;

struct File {
  sqlite3_file base;
  const char* path;  // SQLite keeps it until the file is closed
  bool flush_folder;
  sqlite3_file* Real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

File* AsFile(sqlite3_file* file) { return reinterpret_cast<File*>(file); }

// The result that stands for the trouble, or that of the call. *count bytes are to be written.
template <class Call>
int Watched(DiskAction action, const char* path, std::string_view bytes, int failure, Call call) {
  if (the_disk == nullptr || path == nullptr) return call(bytes.size());
  const DiskCall described{.action = action, .path = path, .new_path = {}, .bytes = bytes};
  size_t count = bytes.size();
  InjectedError trouble = InjectedError::kTransient;
  for (int i = 0; trouble == InjectedError::kTransient && i < kMostInterruptions; ++i)
    trouble = the_disk->Before(described, &count);
  if (trouble == InjectedError::kNone) {
    const int result = call(count);
    if (action != DiskAction::kWrite) the_disk->After(described, result == SQLITE_OK);
    return result;
  }
  return trouble == InjectedError::kFull ? SQLITE_FULL : failure;
}

int FlushFolder(const char* path) {
  const std::string folder = std::filesystem::path(path).parent_path();
  return Watched(DiskAction::kFlushFolder, folder.c_str(), {}, SQLITE_IOERR_DIR_FSYNC,
                 [](size_t) { return SQLITE_OK; });
}

int Close(sqlite3_file* file) { return AsFile(file)->Real()->pMethods->xClose(AsFile(file)->Real()); }

int Read(sqlite3_file* file, void* buffer, int size, sqlite3_int64 offset) {
  File* const f = AsFile(file);
  int result = SQLITE_OK;  // a read beyond the end is none of the disk's failures
  const int failed = Watched(DiskAction::kRead, f->path, {}, SQLITE_IOERR_READ, [&](size_t) {
    result = f->Real()->pMethods->xRead(f->Real(), buffer, size, offset);
    return SQLITE_OK;
  });
  return failed != SQLITE_OK ? failed : result;
}

int Write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset) {
  File* const f = AsFile(file);
  std::string_view rest(static_cast<const char*>(bytes), static_cast<size_t>(size));
  int result = SQLITE_OK;
  while (result == SQLITE_OK && !rest.empty())  // a write may fall short
    result = Watched(DiskAction::kWrite, f->path, rest, SQLITE_IOERR_WRITE, [&](size_t count) {
      const int written =
          f->Real()->pMethods->xWrite(f->Real(), rest.data(), static_cast<int>(count), offset);
      if (written == SQLITE_OK && the_disk != nullptr && f->path != nullptr)
        the_disk->Wrote(f->path, rest.substr(0, count), static_cast<size_t>(offset), false);
      rest.remove_prefix(count);
      offset += static_cast<sqlite3_int64>(count);
      return written;
    });
  return result;
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
  File* const f = AsFile(file);
  return Watched(DiskAction::kWrite, f->path, {}, SQLITE_IOERR_TRUNCATE, [&](size_t) {
    const int result = f->Real()->pMethods->xTruncate(f->Real(), size);
    if (result == SQLITE_OK && the_disk != nullptr && f->path != nullptr)
      the_disk->Wrote(f->path, {}, static_cast<size_t>(size), true);
    return result;
  });
}

int Sync(sqlite3_file* file, int flags) {
  File* const f = AsFile(file);
  const int result = Watched(DiskAction::kFlush, f->path, {}, SQLITE_IOERR_FSYNC,
                             [&](size_t) { return f->Real()->pMethods->xSync(f->Real(), flags); });
  if (result != SQLITE_OK || !f->flush_folder) return result;
  f->flush_folder = false;
  return FlushFolder(f->path);
}

int FileSize(sqlite3_file* f, sqlite3_int64* size) {
  return AsFile(f)->Real()->pMethods->xFileSize(AsFile(f)->Real(), size);
}
int Lock(sqlite3_file* f, int level) { return AsFile(f)->Real()->pMethods->xLock(AsFile(f)->Real(), level); }
int Unlock(sqlite3_file* f, int level) {
  return AsFile(f)->Real()->pMethods->xUnlock(AsFile(f)->Real(), level);
}
int Reserved(sqlite3_file* f, int* out) {
  return AsFile(f)->Real()->pMethods->xCheckReservedLock(AsFile(f)->Real(), out);
}
int Control(sqlite3_file* f, int op, void* arg) {
  return AsFile(f)->Real()->pMethods->xFileControl(AsFile(f)->Real(), op, arg);
}
int SectorSize(sqlite3_file* f) { return AsFile(f)->Real()->pMethods->xSectorSize(AsFile(f)->Real()); }
int Device(sqlite3_file* f) { return AsFile(f)->Real()->pMethods->xDeviceCharacteristics(AsFile(f)->Real()); }
int Map(sqlite3_file* f, int page, int size, int extend, void volatile** out) {
  return AsFile(f)->Real()->pMethods->xShmMap(AsFile(f)->Real(), page, size, extend, out);
}
int ShmLock(sqlite3_file* f, int offset, int n, int flags) {
  return AsFile(f)->Real()->pMethods->xShmLock(AsFile(f)->Real(), offset, n, flags);
}
void Barrier(sqlite3_file* f) { AsFile(f)->Real()->pMethods->xShmBarrier(AsFile(f)->Real()); }
int Unmap(sqlite3_file* f, int remove) {
  return AsFile(f)->Real()->pMethods->xShmUnmap(AsFile(f)->Real(), remove);
}

constexpr sqlite3_io_methods kMethods = {2,       Close,   Read,     Write,   Truncate,   Sync,   FileSize,
                                         Lock,    Unlock,  Reserved, Control, SectorSize, Device, Map,
                                         ShmLock, Barrier, Unmap,    nullptr, nullptr};

int Open(sqlite3_vfs* /*vfs*/, const char* path, sqlite3_file* file, int flags, int* out_flags) {
  File* const f = new (file) File{.base = {}, .path = path, .flush_folder = false};
  const bool makes = path != nullptr && (flags & SQLITE_OPEN_CREATE) != 0 && !std::filesystem::exists(path);
  const DiskAction action = makes ? DiskAction::kCreate : DiskAction::kOpenToRead;
  const int result = Watched(action, path, {}, SQLITE_CANTOPEN, [&](size_t) {
    return the_system->xOpen(the_system, path, f->Real(), flags, out_flags);
  });
  f->flush_folder = makes && (flags & (SQLITE_OPEN_WAL | SQLITE_OPEN_MAIN_JOURNAL)) != 0;
  if (result == SQLITE_OK) f->base.pMethods = &kMethods;
  return result;
}

int Delete(sqlite3_vfs* /*vfs*/, const char* path, int flush_folder) {
  if (!std::filesystem::exists(path)) return SQLITE_IOERR_DELETE_NOENT;
  const int result = Watched(DiskAction::kRemove, path, {}, SQLITE_IOERR_DELETE,
                             [&](size_t) { return the_system->xDelete(the_system, path, 0); });
  return result == SQLITE_OK && flush_folder != 0 ? FlushFolder(path) : result;
}

void Register() {
  static sqlite3_vfs ours;
  if (the_system != nullptr) return;
  the_system = sqlite3_vfs_find(nullptr);
  ours = *the_system;
  ours.zName = "faulty";
  ours.szOsFile = static_cast<int>(sizeof(File)) + the_system->szOsFile;
  ours.xOpen = Open;
  ours.xDelete = Delete;
  sqlite3_vfs_register(&ours, 1);
}

}  // namespace

DiskPromises Promises() {
  return {.database_is_a_file = true, .folders_are_flushed = true, .denials_are_waited_for = false};
}

void SetDiskOfDatabases(FaultyDisk* disk) {
  Register();
  the_disk = disk;
}

}  // namespace velmora::testing
