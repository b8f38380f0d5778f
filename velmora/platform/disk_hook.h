// Hook around every disk call, for fault injection in tests.
//
// posix/disk_calls.cpp and win32/disk_calls.cpp make every call that opens, reads, creates, writes, flushes,
// renames or removes. They report it to the hook before and after; the hook can make it fail. Without a hook
// the cost of a call is one load of a pointer.
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
  kCreate,  // a new file
  kWrite,   // appends
  kFlush,   // a file's content to the disk
  kRename,
  kRemove,
  kMakeFolder,
  kRemoveFolder,
  kFlushFolder,  // a folder's names to the disk
};

// The error with which a call fails.
enum class InjectedError {
  kNone,
  kFull,
  kDenied,
  kFailing,    // device error
  kTransient,  // a retry may succeed: an interrupted call; on Windows a file that another program has open
};

struct DiskCall {
  DiskAction action;
  std::filesystem::path path;      // of the system; empty for standard input
  std::filesystem::path new_path;  // of kRename
  std::string_view bytes;          // of kWrite
};

// Called on the thread that makes the disk call.
class DiskHook {
 public:
  virtual ~DiskHook() = default;
  // A result other than kNone makes the call fail without reaching the system. *count is the number of bytes
  // to write; a smaller value makes a short write.
  virtual InjectedError Before(const DiskCall& call, size_t* count) = 0;
  // After the call; for kWrite `bytes` is what was written.
  virtual void After(const DiskCall& call, bool done) = 0;
};

// Sets the process's hook, which is not owned; null removes it. Returns the previous one.
DiskHook* SetDiskHook(DiskHook* hook);
DiskHook* CurrentDiskHook();

// Reports a file that is read without these calls: standard input, which is open already, and a database.
void ReportOpened(const std::filesystem::path& path, bool done);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_DISK_HOOK_H_
