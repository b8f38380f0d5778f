#include "velmora/platform/posix/disk_calls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "velmora/platform/disk_hook.h"

namespace velmora {
namespace {

// A signal comes now and then; a call that is never let through fails in the end.
constexpr int kMostInterruptions = 1000;

int ErrorOf(InjectedError trouble) {
  switch (trouble) {
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

// Makes a call past the watch, if there is one. `describe` returns its DiskCall; `call` is told how many
// bytes to write at most.
template <class Describe, class Call>
auto Watched(Describe describe, Call call) {
  return Uninterrupted([&]() -> decltype(call(size_t{})) {
    DiskHook* const watch = CurrentDiskWatch();
    if (watch == nullptr) return call(std::string_view::npos);
    DiskCall described = describe();
    size_t count = described.bytes.size();
    if (const InjectedError trouble = watch->Before(described, &count); trouble != InjectedError::kNone) {
      errno = ErrorOf(trouble);
      return -1;
    }
    const auto result = call(count);
    const int error = errno;
    described.bytes = described.bytes.substr(0, result > 0 ? static_cast<size_t>(result) : 0);
    watch->After(described, result >= 0);
    errno = error;
    return result;
  });
}

std::filesystem::path PathOf(const Place& place) {
  return std::filesystem::path(place.folder_path) / place.name;
}

auto On(DiskAction action, const std::string& path) {
  return [action, &path] { return DiskCall{.action = action, .path = path, .new_path = {}, .bytes = {}}; };
}

auto On(DiskAction action, const Place& place) {
  return [action, &place] {
    return DiskCall{.action = action, .path = PathOf(place), .new_path = {}, .bytes = {}};
  };
}

auto Renaming(const Place& from, const Place& to) {
  return [&] {
    return DiskCall{.action = DiskAction::kRename, .path = PathOf(from), .new_path = PathOf(to), .bytes = {}};
  };
}

int Flush(int fd) {
  const int result = fsync(fd);
  return result != 0 && errno == EINVAL ? 0 : result;  // a disk that cannot be told to
}

// Disks without a rename that spares: a second name, which cannot replace one either, then away with the
// first.
int LinkToFreeName(const Place& from, const Place& to) {
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
  return Watched(On(DiskAction::kOpenToRead, path),
                 [&](size_t) { return open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC | more_flags); });
}

ssize_t ReadSome(int fd, const std::string& path, std::span<char> buffer) {
  return Watched(On(DiskAction::kRead, path), [&](size_t) { return read(fd, buffer.data(), buffer.size()); });
}

int CreateNew(const Place& place, mode_t mode) {
  return Watched(On(DiskAction::kCreate, place), [&](size_t) {
    return openat(place.folder.Get(), place.name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_NOFOLLOW | O_CLOEXEC,
                  mode);
  });
}

ssize_t WriteSome(int fd, const Place& place, std::string_view bytes) {
  const auto writing = [&] {
    return DiskCall{.action = DiskAction::kWrite, .path = PathOf(place), .new_path = {}, .bytes = bytes};
  };
  return Watched(writing,
                 [&](size_t count) { return write(fd, bytes.data(), std::min(count, bytes.size())); });
}

int FlushToDisk(int fd, const Place& place) {
  return Watched(On(DiskAction::kFlush, place), [&](size_t) { return Flush(fd); });
}

int RenameOver(const Place& from, const Place& to) {
  return Watched(Renaming(from, to), [&](size_t) {
    return renameat(from.folder.Get(), from.name.c_str(), to.folder.Get(), to.name.c_str());
  });
}

int RenameToFreeName(const Place& from, const Place& to) {
  return Watched(Renaming(from, to), [&](size_t) {
    const int result =
        renameat2(from.folder.Get(), from.name.c_str(), to.folder.Get(), to.name.c_str(), RENAME_NOREPLACE);
    return result != 0 && (errno == EINVAL || errno == ENOSYS) ? LinkToFreeName(from, to) : result;
  });
}

int RemoveName(const Place& place) {
  return Watched(On(DiskAction::kRemove, place),
                 [&](size_t) { return unlinkat(place.folder.Get(), place.name.c_str(), 0); });
}

int FlushFolder(const Place& place) {
  return Watched(On(DiskAction::kFlushFolder, place.folder_path), [&](size_t) {
    const int at = place.folder ? place.folder.Get() : AT_FDCWD;
    const FileDescriptor folder(
        openat(at, place.folder ? "." : place.folder_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder ? Flush(folder.Get()) : -1;
  });
}

int RemoveFile(const std::string& path) {
  return Watched(On(DiskAction::kRemove, path), [&](size_t) { return unlink(path.c_str()); });
}

int RemoveFolder(const std::string& path) {
  return Watched(On(DiskAction::kRemoveFolder, path), [&](size_t) { return rmdir(path.c_str()); });
}

int MakeOneFolder(const std::string& path, mode_t mode) {
  const int result =
      Watched(On(DiskAction::kMakeFolder, path), [&](size_t) { return mkdir(path.c_str(), mode); });
  if (result == 0) (void)FlushFolderOf(path);  // the folder is there all the same
  return result;
}

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
