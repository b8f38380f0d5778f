#include "velmora/platform/win32/new_file.h"

#include <cstddef>
#include <mutex>
#include <vector>

#include "velmora/platform/files.h"
#include "velmora/platform/win32/disk_calls.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr size_t kLongestName = 255;
constexpr DWORD kLongestTurnMs = 5000;
constexpr DWORD kLongestRenameMs = 2000;
constexpr DWORD kLongestExamineMs = 50;
constexpr int kMostRefusals = 4;

// The absolute path, in the form without a length limit when it is long.
std::wstring FullPath(const wchar_t* path) {
  std::wstring full(GetFullPathNameW(path, 0, nullptr, nullptr), L'\0');
  const DWORD length = GetFullPathNameW(path, static_cast<DWORD>(full.size()), full.data(), nullptr);
  if (length == 0 || length >= full.size()) return {};
  full.resize(length);
  if (full.size() < MAX_PATH || full.starts_with(LR"(\\?\)") || full.starts_with(LR"(\\.\)")) return full;
  return full.starts_with(LR"(\\)") ? LR"(\\?\UNC\)" + full.substr(2) : LR"(\\?\)" + full;
}

// Opens for queries only; always shares.
FileHandle OpenToAsk(const std::wstring& path, DWORD access) {
  return FileHandle(CreateFileW(path.c_str(), access, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

// The target of a symbolic link, or the path itself. Empty for a dangling link.
std::wstring FollowLinks(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return path;
  const FileHandle file = OpenToAsk(path, 0);
  if (!file) return {};
  std::wstring target(GetFinalPathNameByHandleW(file.Get(), nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
  const DWORD length = GetFinalPathNameByHandleW(file.Get(), target.data(), static_cast<DWORD>(target.size()),
                                                 FILE_NAME_NORMALIZED);
  if (length == 0 || length >= target.size()) return {};
  target.resize(length);
  return target;
}

enum class Target { kAbsent, kReplaceable, kRefused };

Target Examine(const std::wstring& path) {
  constexpr DWORD kRefused = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DEVICE;
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND ? Target::kAbsent : Target::kRefused;
  }
  if ((attributes & kRefused) != 0) return Target::kRefused;
  // Its permissions may forbid what the folder's allow. A sharing violation is left to the rename.
  FileHandle file;
  const bool opened = Persist(kLongestExamineMs, kLongestExamineMs, [&] {
    file = FileHandle(CreateFileW(path.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    return static_cast<bool>(file);
  });
  if (!opened) return GetLastError() == ERROR_SHARING_VIOLATION ? Target::kReplaceable : Target::kRefused;
  return GetFileType(file.Get()) == FILE_TYPE_DISK ? Target::kReplaceable : Target::kRefused;
}

std::vector<std::byte> AccessList(HANDLE file) {
  DWORD size = 0;
  GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<std::byte> descriptor(size);
  if (size == 0 || !GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, descriptor.data(), size, &size))
    return {};
  return descriptor;
}

// Copies attributes, creation time and permissions of the old file as far as permitted.
void CopyProperties(const std::wstring& old_name, HANDLE to) {
  const FileHandle old = OpenToAsk(old_name, READ_CONTROL | FILE_READ_ATTRIBUTES);
  if (!old) return;
  FILE_BASIC_INFO info{};
  if (GetFileInformationByHandleEx(old.Get(), FileBasicInfo, &info, sizeof info) != 0) {
    constexpr DWORD kKept = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                            FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    FILE_BASIC_INFO wanted{};  // a time of 0 means unchanged
    wanted.CreationTime = info.CreationTime;
    wanted.FileAttributes =
        (info.FileAttributes & kKept) != 0 ? info.FileAttributes & kKept : FILE_ATTRIBUTE_NORMAL;
    SetFileInformationByHandle(to, FileBasicInfo, &wanted, sizeof wanted);
  }
  // Permissions that both inherit from the folder stay inherited.
  std::vector<std::byte> access = AccessList(old.Get());
  if (!access.empty() && access != AccessList(to))
    SetKernelObjectSecurity(to, DACL_SECURITY_INFORMATION, access.data());
}

// The new files that exist, for RemoveNewFiles. Renaming and removing take turns: a file that has the
// target's name must not be removed through its handle.
std::mutex g_turn;
std::vector<const Win32NewFile*> g_new_files;

}  // namespace

void RemoveNewFiles() {
  const std::scoped_lock turn(g_turn);
  for (const Win32NewFile* file : g_new_files) file->Remove();
}

bool Win32NewFile::ChooseTemporary(const CString& temporary) {
  if (!temporary.IsEmpty()) {
    temporary_ = FullPath(SystemPath(temporary));
    if (temporary_.empty()) return false;
    // A temporary that is the target itself would destroy the old file; TemporaryName is used instead.
    // Another writer's rename moves its temporary to the target: with the target opened first, the other way
    // round its file is met under both names.
    if (!EqualNoCase(temporary_, target_) &&
        !IsSameFile(std::wstring_view(target_), std::wstring_view(temporary_)))
      return true;
  }
  const size_t name = target_.rfind(L'\\') + 1;
  std::wstring target_name = target_.substr(name);
  if (target_name.empty()) return false;
  for (wchar_t& c : target_name) c = LowerLetter(c);
  const std::wstring own = target_.substr(0, name) + TemporaryName<wchar_t>(target_name, kLongestName);
  temporary_ = FullPath(own.c_str());
  return !temporary_.empty();
}

// After a failed CreateNew. True when another attempt may succeed, at once or after a pause.
bool Win32NewFile::RemoveLeftover(bool* pause) {
  *pause = false;
  DWORD error = GetLastError();
  const bool taken = error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS;
  if (taken) {
    refusals_left_ = kMostRefusals;
    if (RemoveFile(temporary_.c_str())) return true;
    error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND) return true;
  }
  *pause = true;
  if (!IsInUse(error) && !IsDenied(error)) return false;
  const DWORD attributes = GetFileAttributesW(temporary_.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES)
    return (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) == 0;
  // The name is free. If it was free before, the folder denies new files.
  return taken || GetLastError() != ERROR_FILE_NOT_FOUND || --refusals_left_ > 0;
}

bool Win32NewFile::CreateTemporary() {
  std::wstring lower = temporary_;
  for (wchar_t& c : lower) c = LowerLetter(c);
  const std::string name = Utf8FromWide(lower);
  refusals_left_ = kMostRefusals;
  const ULONGLONG start = GetTickCount64();
  do {
    file_ = CreateNew(temporary_);
    if (file_) {
      const std::scoped_lock turn(g_turn);
      g_new_files.push_back(this);
      Hold(name);
      return true;
    }
    bool pause = false;
    if (!RemoveLeftover(&pause)) return false;
    if (!pause) continue;
    if (IsHeldByThisThread(name)) return false;
    Sleep(kPauseMs);
  } while (GetTickCount64() - start < kLongestTurnMs);
  return false;
}

bool Win32NewFile::Begin(const CString& target, const CString& temporary) {
  target_ = FollowLinks(FullPath(SystemPath(target)));
  if (target_.empty()) return false;
  const Target found = Examine(target_);
  if (found == Target::kRefused || !ChooseTemporary(temporary) || !CreateTemporary()) return false;
  if (found == Target::kReplaceable) CopyProperties(target_, file_.Get());
  return true;
}

size_t Win32NewFile::WriteSome(std::string_view bytes) {
  return velmora::WriteSome(file_.Get(), temporary_, bytes);
}

bool Win32NewFile::RenameIntoPlace(Existing existing) {
  const Target found = Examine(target_);
  if (found == Target::kRefused) return false;
  if (found == Target::kReplaceable) CopyProperties(target_, file_.Get());
  if (modified_ && SetFileTime(file_.Get(), nullptr, nullptr, &*modified_) == 0) return false;
  if (!FlushToDisk(file_.Get(), temporary_)) return false;
  // Other readers of the old file, such as a virus scanner, usually close it soon.
  const bool renamed = Persist(kLongestRenameMs, kLongestRenameMs, [&] {
    const std::scoped_lock turn(g_turn);
    if (!RenameOpenFile(file_.Get(), temporary_, target_, existing == Existing::kReplace)) return false;
    std::erase(g_new_files, this);
    return true;
  });
  if (renamed) file_.Close();
  return renamed;
}

void Win32NewFile::Remove() const { (void)RemoveOpenFile(file_.Get(), temporary_); }

Win32NewFile::~Win32NewFile() {
  if (!file_) return;
  Remove();
  const std::scoped_lock turn(g_turn);
  std::erase(g_new_files, this);
}

std::unique_ptr<NewFile> MakeNewFile(const CString& target, const CString& temporary) {
  auto file = std::make_unique<Win32NewFile>();
  if (!file->Begin(target, temporary)) return nullptr;
  return file;
}

}  // namespace velmora
