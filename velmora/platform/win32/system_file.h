// File handles, error classes and retries for the sources that call the system's file functions.
#ifndef VELMORA_PLATFORM_WIN32_SYSTEM_FILE_H_
#define VELMORA_PLATFORM_WIN32_SYSTEM_FILE_H_

#include <cstdint>
#include <utility>

#include "velmora/platform/types.h"
#include "velmora/text/string.h"

namespace velmora {

// Owns a file handle.
class FileHandle {
 public:
  FileHandle() = default;
  explicit FileHandle(HANDLE handle) : handle_(handle) {}
  FileHandle(FileHandle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
  FileHandle& operator=(FileHandle&& other) noexcept {
    Close();
    handle_ = std::exchange(other.handle_, INVALID_HANDLE_VALUE);
    return *this;
  }
  ~FileHandle() { Close(); }

  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return handle_; }
  void Close() {
    if (*this) CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

// The path for system calls; empty for one with a zero, which the system would cut there.
inline const wchar_t* SystemPath(const CString& path) {
  return path.Find(L'\0') < 0 ? path.GetString() : L"";
}

inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
inline constexpr DWORD kPauseMs = 5;

// Another program has the file open.
inline bool IsInUse(DWORD error) { return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION; }

// Access is denied, or the file is being deleted.
inline bool IsDenied(DWORD error) { return error == ERROR_ACCESS_DENIED || error == ERROR_DELETE_PENDING; }

// Repeats `attempt` until it returns true, while the file is in use at most `in_use_ms` and while access is
// denied at most `denied_ms`.
template <class Attempt>
bool Persist(DWORD in_use_ms, DWORD denied_ms, Attempt attempt) {
  const ULONGLONG start = GetTickCount64();
  for (;;) {
    if (attempt()) return true;
    const DWORD error = GetLastError();
    const ULONGLONG limit = IsInUse(error) ? in_use_ms : IsDenied(error) ? denied_ms : 0;
    if (GetTickCount64() - start >= limit) {
      SetLastError(error);
      return false;
    }
    Sleep(kPauseMs);
  }
}

}  // namespace velmora

#endif  // VELMORA_PLATFORM_WIN32_SYSTEM_FILE_H_
