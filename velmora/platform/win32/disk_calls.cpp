#include "velmora/platform/win32/disk_calls.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <vector>

#include "velmora/platform/device_file.h"
#include "velmora/platform/disk_hook.h"

namespace velmora {
namespace {

constexpr size_t kMostAtOnce = size_t{1} << 24;

DWORD ErrorOf(InjectedError trouble) {
  switch (trouble) {
    case InjectedError::kFull:
      return ERROR_DISK_FULL;
    case InjectedError::kDenied:
      return ERROR_ACCESS_DENIED;
    case InjectedError::kTransient:
      return ERROR_SHARING_VIOLATION;
    default:
      return ERROR_IO_DEVICE;
  }
}

// Makes a call past the watch, if there is one. `make` is told how many bytes to write at most and
// returns whether it did, and sets *count to what was written where it writes.
template <class Make>
bool Watched(DiskAction action, const wchar_t* path, const wchar_t* new_path, std::string_view bytes,
             Make make) {
  size_t count = bytes.size();
  DiskHook* const watch = CurrentDiskWatch();
  if (watch == nullptr) return make(&count);
  DiskCall call{.action = action, .path = path, .new_path = new_path, .bytes = bytes};
  if (const InjectedError trouble = watch->Before(call, &count); trouble != InjectedError::kNone) {
    SetLastError(ErrorOf(trouble));
    return false;
  }
  const bool done = make(&count);
  const DWORD error = GetLastError();
  call.bytes = bytes.substr(0, done ? count : 0);
  watch->After(call, done);
  SetLastError(error);
  return done;
}

template <class Make>
bool Watched(DiskAction action, const wchar_t* path, Make make) {
  return Watched(action, path, L"", {}, [&](size_t*) { return make(); });
}

bool Rename(HANDLE file, const std::wstring& name, bool replace) {
  // The information class and the flags of newer systems: also a file that somebody reads can give up
  // its name. The older form is for systems and disks without it.
  constexpr auto kRenameInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
  constexpr DWORD kReplaceIfExists = 1;
  constexpr DWORD kPosixSemantics = 2;
  const size_t name_bytes = name.size() * sizeof(wchar_t);
  std::vector<std::byte> storage(sizeof(FILE_RENAME_INFO) + name_bytes);
  auto* info = new (storage.data()) FILE_RENAME_INFO{};
  info->FileNameLength = static_cast<DWORD>(name_bytes);
  std::memcpy(storage.data() + offsetof(FILE_RENAME_INFO, FileName), name.data(), name_bytes);
  const auto size = static_cast<DWORD>(storage.size());
  const DWORD flags = kPosixSemantics | (replace ? kReplaceIfExists : 0);
  std::memcpy(storage.data(), &flags, sizeof flags);
  if (SetFileInformationByHandle(file, kRenameInfoEx, info, size) != 0) return true;
  const DWORD plain = replace ? 1 : 0;
  std::memcpy(storage.data(), &plain, sizeof plain);
  return SetFileInformationByHandle(file, FileRenameInfo, info, size) != 0;
}

}  // namespace

FileHandle OpenToRead(const wchar_t* path) {
  FileHandle file;
  Watched(DiskAction::kOpenToRead, path, [&] {
    file = FileHandle(CreateFileW(path, GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    return static_cast<bool>(file);
  });
  return file;
}

std::int64_t ReadSome(HANDLE file, const std::wstring& path, std::span<char> buffer) {
  DWORD count = 0;
  const bool done = Watched(DiskAction::kRead, path.c_str(), [&] {
    if (ReadFile(file, buffer.data(), static_cast<DWORD>(std::min(buffer.size(), kMostAtOnce)), &count,
                 nullptr) != 0)
      return true;
    // The writer of a pipe is done.
    return GetLastError() == ERROR_BROKEN_PIPE || GetLastError() == ERROR_HANDLE_EOF;
  });
  return done ? std::int64_t{count} : -1;
}

FileHandle CreateNew(const std::wstring& path) {
  FileHandle file;
  Watched(DiskAction::kCreate, path.c_str(), [&] {
    // WRITE_DAC for the permissions of the old file; where it is not granted we do without.
    constexpr DWORD kAccess = GENERIC_READ | GENERIC_WRITE | DELETE;
    const auto create = [&](DWORD access) {
      file = FileHandle(
          CreateFileW(path.c_str(), access, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
      return static_cast<bool>(file);
    };
    return create(kAccess | WRITE_DAC) || (GetLastError() == ERROR_ACCESS_DENIED && create(kAccess));
  });
  return file;
}

size_t WriteSome(HANDLE file, const std::wstring& path, std::string_view bytes) {
  DWORD written = 0;
  Watched(DiskAction::kWrite, path.c_str(), L"", bytes, [&](size_t* count) {
    const bool done = WriteFile(file, bytes.data(), static_cast<DWORD>(std::min(*count, kMostAtOnce)),
                                &written, nullptr) != 0;
    *count = written;
    return done;
  });
  return written;
}

bool FlushToDisk(HANDLE file, const std::wstring& path) {
  return Watched(DiskAction::kFlush, path.c_str(), [&] { return FlushFileBuffers(file) != 0; });
}

bool RenameOpenFile(HANDLE file, const std::wstring& path, const std::wstring& name, bool replace) {
  return Watched(DiskAction::kRename, path.c_str(), name.c_str(), {},
                 [&](size_t*) { return Rename(file, name, replace); });
}

bool RemoveOpenFile(HANDLE file, const std::wstring& path) {
  return Watched(DiskAction::kRemove, path.c_str(), [&] {
    FILE_DISPOSITION_INFO info{};
    info.DeleteFile = TRUE;
    return SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof info) != 0;
  });
}

bool RemoveFile(const wchar_t* path) {
  return Watched(DiskAction::kRemove, path, [&] { return DeleteFileW(path) != 0; });
}

bool RemoveFolder(const wchar_t* path) {
  return Watched(DiskAction::kRemoveFolder, path, [&] { return RemoveDirectoryW(path) != 0; });
}

bool MakeOneFolder(const wchar_t* path) {
  return Watched(DiskAction::kMakeFolder, path, [&] { return CreateDirectoryW(path, nullptr) != 0; });
}

std::FILE* OpenDeviceToWrite(const CString& path) { return _wfopen(path, L"wb"); }

}  // namespace velmora
