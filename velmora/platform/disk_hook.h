// The one door through which the disk is changed, and read, and who may stand in it.
//
// Every call that opens, reads, makes, writes, flushes, renames or removes passes here on its way to the
// system (posix/disk_calls.cpp, win32/disk_calls.cpp). A program that sets a watch is told of each before
// it is made and may have it fail: so tests fill the disk, take permissions away and cut the power at any
// call. Without a watch, which is the rule, a call costs one look at a pointer.
#ifndef VELMORA_PLATFORM_DISK_HOOK_H_
#define VELMORA_PLATFORM_DISK_HOOK_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>

namespace velmora {

enum class DiskAction {
  kOpenToRead,
  kRead,
  kCreate,  // a file that was not there
  kWrite,   // at the end of what was written so far
  kFlush,   // what was written to a file, to the disk
  kRename,
  kRemove,
  kMakeFolder,
  kRemoveFolder,
  kFlushFolder,  // the names in a folder, to the disk
};

// Why a call fails.
enum class InjectedError {
  kNone,
  kFull,
  kDenied,
  kFailing,    // the device
  kTransient,  // to be tried again: a signal came in between; on Windows somebody has the file open
};

struct DiskCall {
  DiskAction action;
  std::filesystem::path path;      // the system's own; empty for standard input
  std::filesystem::path new_path;  // of kRename
  std::string_view bytes;          // of kWrite
};

// For one thread at a time, or with a lock of its own.
class DiskHook {
 public:
  virtual ~DiskHook() = default;
  // Before the call is made. Any answer but kNone makes it fail without having been made. *count bytes
  // are to be written; less makes it a write that fell short.
  virtual InjectedError Before(const DiskCall& call, size_t* count) = 0;
  // The call has been made, with this success; of kWrite `bytes` are those that were written.
  virtual void After(const DiskCall& call, bool done) = 0;
};

// For the whole process; null ends it. Returns the one before. The watch is not owned.
DiskHook* SetDiskHook(DiskHook* watch);
// For the sources that call the system.
DiskHook* CurrentDiskWatch();

}  // namespace velmora

#endif  // VELMORA_PLATFORM_DISK_HOOK_H_
