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

DWORD ErrorOf(InjectedError error) {
  switch (error) {
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

// Makes a call and reports it to the hook. `make` returns its success; for a write it gets the largest number
// of bytes and sets *count to how many were written.
template <class Make>
bool WithHook(DiskAction action, const wchar_t* path, const wchar_t* new_path, std::string_view bytes,
              Make make) {
  size_t count = bytes.size();
  DiskHook* const hook = CurrentDiskHook();
  if (hook == nullptr) return make(&count);
  DiskCall call{.action = action, .path = path, .new_path = new_path, .bytes = bytes};
  if (const InjectedError error = hook->Before(call, &count); error != InjectedError::kNone) {
    SetLastError(ErrorOf(error));
    return false;
  }
  const bool done = make(&count);
  const DWORD error = GetLastError();
  call.bytes = bytes.substr(0, done ? count : 0);
  hook->After(call, done);
  SetLastError(error);
  return done;
}

template <class Make>
bool WithHook(DiskAction action, const wchar_t* path, Make make) {
  return WithHook(action, path, L"", {}, [&](size_t*) { return make(); });
}

bool Rename(HANDLE file, const std::wstring& name, bool replace) {
  // The newer information class can also replace a file that is open for reading; the older one is for
  // systems and disks without it.
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
  WithHook(DiskAction::kOpenToRead, path, [&] {
    file = FileHandle(CreateFileW(path, GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    return static_cast<bool>(file);
  });
  return file;
}

std::int64_t ReadSome(HANDLE file, const std::wstring& path, std::span<char> buffer) {
  DWORD count = 0;
  const bool done = WithHook(DiskAction::kRead, path.c_str(), [&] {
    if (ReadFile(file, buffer.data(), static_cast<DWORD>(std::min(buffer.size(), kMostAtOnce)), &count,
                 nullptr) != 0)
      return true;
    // A pipe's writer has closed it.
    return GetLastError() == ERROR_BROKEN_PIPE || GetLastError() == ERROR_HANDLE_EOF;
  });
  return done ? std::int64_t{count} : -1;
}

FileHandle CreateNew(const std::wstring& path) {
  FileHandle file;
  WithHook(DiskAction::kCreate, path.c_str(), [&] {
    // WRITE_DAC is for copying the old file's permissions; it may not be granted.
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
  WithHook(DiskAction::kWrite, path.c_str(), L"", bytes, [&](size_t* count) {
    const bool done = WriteFile(file, bytes.data(), static_cast<DWORD>(std::min(*count, kMostAtOnce)),
                                &written, nullptr) != 0;
    *count = written;
    return done;
  });
  return written;
}

bool FlushToDisk(HANDLE file, const std::wstring& path) {
  return WithHook(DiskAction::kFlush, path.c_str(), [&] { return FlushFileBuffers(file) != 0; });
}

bool RenameOpenFile(HANDLE file, const std::wstring& path, const std::wstring& name, bool replace) {
  return WithHook(DiskAction::kRename, path.c_str(), name.c_str(), {},
                  [&](size_t*) { return Rename(file, name, replace); });
}

bool RemoveOpenFile(HANDLE file, const std::wstring& path) {
  return WithHook(DiskAction::kRemove, path.c_str(), [&] {
    FILE_DISPOSITION_INFO info{};
    info.DeleteFile = TRUE;
    return SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof info) != 0;
  });
}

bool RemoveFile(const wchar_t* path) {
  return WithHook(DiskAction::kRemove, path, [&] { return DeleteFileW(path) != 0; });
}

bool RemoveFolder(const wchar_t* path) {
  return WithHook(DiskAction::kRemoveFolder, path, [&] { return RemoveDirectoryW(path) != 0; });
}

bool MakeOneFolder(const wchar_t* path) {
  return WithHook(DiskAction::kMakeFolder, path, [&] { return CreateDirectoryW(path, nullptr) != 0; });
}

std::FILE* OpenDeviceToWrite(const CString& path) { return _wfopen(path, L"wb"); }

}  // namespace velmora
