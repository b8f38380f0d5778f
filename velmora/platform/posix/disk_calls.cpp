#include "velmora/platform/posix/disk_calls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "velmora/platform/device_file.h"
#include "velmora/platform/disk_hook.h"
#include "velmora/platform/posix/native_path.h"

namespace velmora {
namespace {

// A call that is interrupted every time fails in the end.
constexpr int kMostInterruptions = 1000;

int ErrorOf(InjectedError error) {
  switch (error) {
    case InjectedError::kFull:
      return ENOSPC;
    case InjectedError::kDenied:
      return EACCES;
    case InjectedError::kTransient:
      return EINTR;
    default:
      return EIO;
  }
}

template <class Call>
auto Uninterrupted(Call call) {
  auto result = call();
  for (int i = 0; result < 0 && errno == EINTR && i < kMostInterruptions; ++i) result = call();
  return result;
}

// Makes a call and reports it to the hook. `describe` returns its DiskCall; `call` gets the largest number of
// bytes to write.
template <class Describe, class Call>
auto WithHook(Describe describe, Call call) {
  return Uninterrupted([&]() -> decltype(call(size_t{})) {
    DiskHook* const hook = CurrentDiskHook();
    if (hook == nullptr) return call(std::string_view::npos);
    DiskCall described = describe();
    size_t count = described.bytes.size();
    if (const InjectedError error = hook->Before(described, &count); error != InjectedError::kNone) {
      errno = ErrorOf(error);
      return -1;
    }
    const auto result = call(count);
    const int error = errno;
    described.bytes = described.bytes.substr(0, result > 0 ? static_cast<size_t>(result) : 0);
    hook->After(described, result >= 0);
    errno = error;
    return result;
  });
}

std::filesystem::path PathOf(const FolderEntry& entry) {
  return std::filesystem::path(entry.folder_path) / entry.name;
}

auto On(DiskAction action, const std::string& path) {
  return [action, &path] { return DiskCall{.action = action, .path = path, .new_path = {}, .bytes = {}}; };
}

auto On(DiskAction action, const FolderEntry& entry) {
  return [action, &entry] {
    return DiskCall{.action = action, .path = PathOf(entry), .new_path = {}, .bytes = {}};
  };
}

auto Renaming(const FolderEntry& from, const FolderEntry& to) {
  return [&] {
    return DiskCall{.action = DiskAction::kRename, .path = PathOf(from), .new_path = PathOf(to), .bytes = {}};
  };
}

int Flush(int fd) {
  const int result = fsync(fd);
  return result != 0 && errno == EINVAL ? 0 : result;  // a disk without this call
}

// For disks without RENAME_NOREPLACE: linkat does not replace a name either; then the old name is removed.
int LinkToFreeName(const FolderEntry& from, const FolderEntry& to) {
  const int result = linkat(from.folder.Get(), from.name.c_str(), to.folder.Get(), to.name.c_str(), 0);
  if (result == 0) unlinkat(from.folder.Get(), from.name.c_str(), 0);
  return result;
}

int FlushFolderOf(const std::string& path) {
  const std::filesystem::path folder = std::filesystem::path(path).parent_path();
  return FlushFolder({.folder = {}, .folder_path = folder.empty() ? "." : folder.string(), .name = {}});
}

}  // namespace

int OpenToRead(const std::string& path, int more_flags) {
  return WithHook(On(DiskAction::kOpenToRead, path),
                  [&](size_t) { return open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC | more_flags); });
}

ssize_t ReadSome(int fd, const std::string& path, std::span<char> buffer) {
  return WithHook(On(DiskAction::kRead, path),
                  [&](size_t) { return read(fd, buffer.data(), buffer.size()); });
}

int CreateNew(const FolderEntry& entry, mode_t mode) {
  return WithHook(On(DiskAction::kCreate, entry), [&](size_t) {
    return openat(entry.folder.Get(), entry.name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_NOFOLLOW | O_CLOEXEC,
                  mode);
  });
}

ssize_t WriteSome(int fd, const FolderEntry& entry, std::string_view bytes) {
  const auto writing = [&] {
    return DiskCall{.action = DiskAction::kWrite, .path = PathOf(entry), .new_path = {}, .bytes = bytes};
  };
  return WithHook(writing,
                  [&](size_t count) { return write(fd, bytes.data(), std::min(count, bytes.size())); });
}

int FlushToDisk(int fd, const FolderEntry& entry) {
  return WithHook(On(DiskAction::kFlush, entry), [&](size_t) { return Flush(fd); });
}

int RenameOver(const FolderEntry& from, const FolderEntry& to) {
  return WithHook(Renaming(from, to), [&](size_t) {
    return renameat(from.folder.Get(), from.name.c_str(), to.folder.Get(), to.name.c_str());
  });
}

int RenameToFreeName(const FolderEntry& from, const FolderEntry& to) {
  return WithHook(Renaming(from, to), [&](size_t) {
    const int result =
        renameat2(from.folder.Get(), from.name.c_str(), to.folder.Get(), to.name.c_str(), RENAME_NOREPLACE);
    return result != 0 && (errno == EINVAL || errno == ENOSYS) ? LinkToFreeName(from, to) : result;
  });
}

int RemoveName(const FolderEntry& entry) {
  return WithHook(On(DiskAction::kRemove, entry),
                  [&](size_t) { return unlinkat(entry.folder.Get(), entry.name.c_str(), 0); });
}

int RemoveNameInHandler(int folder, const char* name) { return unlinkat(folder, name, 0); }

int FlushFolder(const FolderEntry& entry) {
  return WithHook(On(DiskAction::kFlushFolder, entry.folder_path), [&](size_t) {
    const int at = entry.folder ? entry.folder.Get() : AT_FDCWD;
    const FileDescriptor folder(
        openat(at, entry.folder ? "." : entry.folder_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder ? Flush(folder.Get()) : -1;
  });
}

int RemoveFile(const std::string& path) {
  return WithHook(On(DiskAction::kRemove, path), [&](size_t) { return unlink(path.c_str()); });
}

int RemoveFolder(const std::string& path) {
  return WithHook(On(DiskAction::kRemoveFolder, path), [&](size_t) { return rmdir(path.c_str()); });
}

int MakeOneFolder(const std::string& path, mode_t mode) {
  const int result =
      WithHook(On(DiskAction::kMakeFolder, path), [&](size_t) { return mkdir(path.c_str(), mode); });
  if (result == 0) (void)FlushFolderOf(path);  // the folder exists even when this fails
  return result;
}

std::FILE* OpenDeviceToWrite(const CString& path) { return std::fopen(NativePath(path).c_str(), "wb"); }

bool MakeFolders(const std::string& path) {
  for (size_t at = 0; at < path.size();) {
    at = std::min(path.find('/', at + 1), path.size());
    // A failure is ignored: the folder exists already, or the check below fails.
    (void)MakeOneFolder(path.substr(0, at), 0700);
  }
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace velmora
