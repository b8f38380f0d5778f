// What the sources that call the system's file functions share.
#ifndef VELMORA_PLATFORM_WIN32_SYSTEM_FILE_H_
#define VELMORA_PLATFORM_WIN32_SYSTEM_FILE_H_

#include <cstdint>
#include <utility>

#include "velmora/platform/types.h"
#include "velmora/text/string.h"

namespace velmora {

// An open file, closed at the end.
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

// The path for the system; one with a zero in it would be another path there, so it is none.
inline const wchar_t* SystemPath(const CString& path) {
  return path.Find(L'\0') < 0 ? path.GetString() : L"";
}

inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
inline constexpr DWORD kPauseMs = 5;

// Another program holds the file at the moment.
inline bool IsInUse(DWORD error) { return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION; }

// We may not, or the file is just giving way to another one.
inline bool IsDenied(DWORD error) { return error == ERROR_ACCESS_DENIED || error == ERROR_DELETE_PENDING; }

// Calls `attempt`, which returns whether it did, again while the failure may pass: so long when the
// file is in use, so long when access is denied.
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
