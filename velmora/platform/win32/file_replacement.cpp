#include "velmora/platform/win32/file_replacement.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

#include "velmora/platform/files.h"
#include "velmora/platform/temporary_name.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr size_t kBufferSize = size_t{64} << 10;
constexpr size_t kMostWritten = size_t{1} << 24;
constexpr size_t kLongestName = 255;
constexpr DWORD kLongestTurnMs = 5000;
constexpr DWORD kLongestRenameMs = 2000;
constexpr DWORD kLongestExamineMs = 50;
constexpr int kMostRefusals = 4;

// What changes the disk goes through these.

HANDLE CreateNew(const wchar_t* path) {
  // WRITE_DAC for the permissions of the old file; where it is not granted we do without.
  constexpr DWORD kAccess = GENERIC_READ | GENERIC_WRITE | DELETE;
  const HANDLE file =
      CreateFileW(path, kAccess | WRITE_DAC, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_ACCESS_DENIED) return file;
  return CreateFileW(path, kAccess, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool WriteSome(HANDLE file, std::string_view bytes, DWORD* written) {
  const auto count = static_cast<DWORD>(std::min(bytes.size(), kMostWritten));
  return WriteFile(file, bytes.data(), count, written, nullptr) != 0;
}

bool FlushToDisk(HANDLE file) { return FlushFileBuffers(file) != 0; }

bool RenameOpenFile(HANDLE file, const std::wstring& name, bool replace) {
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

bool RemoveOpenFile(HANDLE file) {
  FILE_DISPOSITION_INFO info{};
  info.DeleteFile = TRUE;
  return SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof info) != 0;
}

bool RemoveName(const wchar_t* path) { return DeleteFileW(path) != 0; }

// The path from the root, in the form without a limit to its length when it needs that.
std::wstring FullPath(const wchar_t* path) {
  std::wstring full(GetFullPathNameW(path, 0, nullptr, nullptr), L'\0');
  const DWORD length = GetFullPathNameW(path, static_cast<DWORD>(full.size()), full.data(), nullptr);
  if (length == 0 || length >= full.size()) return {};
  full.resize(length);
  if (full.size() < MAX_PATH || full.starts_with(LR"(\\?\)") || full.starts_with(LR"(\\.\)")) return full;
  return full.starts_with(LR"(\\)") ? LR"(\\?\UNC\)" + full.substr(2) : LR"(\\?\)" + full;
}

// Opens for questions only, whatever others do with the file.
FileHandle OpenToAsk(const std::wstring& path, DWORD access) {
  return FileHandle(CreateFileW(path.c_str(), access, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

// What a symbolic link stands for; the path itself when it is none. Empty when it leads nowhere.
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
  // Its permissions may forbid what those of the folder allow. That somebody has it open just now is
  // for the renaming to find out.
  FileHandle file;
  const bool opened = Persist(kLongestExamineMs, kLongestExamineMs, [&] {
    file = FileHandle(CreateFileW(path.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    return static_cast<bool>(file);
  });
  if (!opened) return GetLastError() == ERROR_SHARING_VIOLATION ? Target::kReplaceable : Target::kRefused;
  return GetFileType(file.Get()) == FILE_TYPE_DISK ? Target::kReplaceable : Target::kRefused;
}

bool IsSameFile(const std::wstring& a, const std::wstring& b) {
  if (EqualNoCase(a, b)) return true;
  const FileHandle first = OpenToAsk(a, 0);
  const FileHandle second = OpenToAsk(b, 0);
  BY_HANDLE_FILE_INFORMATION x{};
  BY_HANDLE_FILE_INFORMATION y{};
  return first && second && GetFileInformationByHandle(first.Get(), &x) != 0 &&
         GetFileInformationByHandle(second.Get(), &y) != 0 &&
         x.dwVolumeSerialNumber == y.dwVolumeSerialNumber && x.nFileIndexHigh == y.nFileIndexHigh &&
         x.nFileIndexLow == y.nFileIndexLow;
}

std::vector<std::byte> AccessList(HANDLE file) {
  DWORD size = 0;
  GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<std::byte> descriptor(size);
  if (size == 0 || !GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, descriptor.data(), size, &size))
    return {};
  return descriptor;
}

// Attributes, time of creation and permissions of the old file, as far as we may.
void CopyProperties(const std::wstring& old_name, HANDLE to) {
  const FileHandle old = OpenToAsk(old_name, READ_CONTROL | FILE_READ_ATTRIBUTES);
  if (!old) return;
  FILE_BASIC_INFO info{};
  if (GetFileInformationByHandleEx(old.Get(), FileBasicInfo, &info, sizeof info) != 0) {
    constexpr DWORD kKept = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                            FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    FILE_BASIC_INFO wanted{};  // a time of 0 changes nothing
    wanted.CreationTime = info.CreationTime;
    wanted.FileAttributes =
        (info.FileAttributes & kKept) != 0 ? info.FileAttributes & kKept : FILE_ATTRIBUTE_NORMAL;
    SetFileInformationByHandle(to, FileBasicInfo, &wanted, sizeof wanted);
  }
  // What the folder gave to both needs no copy, and stays the folder's to change.
  std::vector<std::byte> access = AccessList(old.Get());
  if (!access.empty() && access != AccessList(to))
    SetKernelObjectSecurity(to, DACL_SECURITY_INFORMATION, access.data());
}

}  // namespace

bool NewFile::ChooseTemporary(const CString& temporary) {
  if (!temporary.IsEmpty()) {
    temporary_ = FullPath(SystemPath(temporary));
    if (temporary_.empty()) return false;
    // One that is the target itself would be the end of the old file: then we take our own name.
    if (!IsSameFile(temporary_, target_)) return true;
  }
  const size_t name = target_.rfind(L'\\') + 1;
  std::wstring target_name = target_.substr(name);
  if (target_name.empty()) return false;
  for (wchar_t& c : target_name) c = LowerLetter(c);
  const std::wstring own = target_.substr(0, name) + TemporaryName<wchar_t>(target_name, kLongestName);
  temporary_ = FullPath(own.c_str());
  return !temporary_.empty();
}

// After a refused CreateNew. False for good; true when the next attempt may get through, at once or
// after a pause.
bool NewFile::ClearTheWay(bool* pause) {
  *pause = false;
  DWORD error = GetLastError();
  const bool taken = error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS;
  if (taken) {
    refusals_left_ = kMostRefusals;
    if (RemoveName(temporary_.c_str())) return true;
    error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND) return true;
  }
  *pause = true;
  if (!IsInUse(error) && !IsDenied(error)) return false;
  const DWORD attributes = GetFileAttributesW(temporary_.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES)
    return (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) == 0;
  // Nothing is there now. If nothing was there before either, we may make no file here.
  return taken || GetLastError() != ERROR_FILE_NOT_FOUND || --refusals_left_ > 0;
}

bool NewFile::CreateTemporary() {
  refusals_left_ = kMostRefusals;
  const ULONGLONG start = GetTickCount64();
  do {
    file_ = FileHandle(CreateNew(temporary_.c_str()));
    if (file_) return true;
    bool pause = false;
    if (!ClearTheWay(&pause)) return false;
    if (pause) Sleep(kPauseMs);
  } while (GetTickCount64() - start < kLongestTurnMs);
  return false;
}

bool NewFile::Begin(const CString& target, const CString& temporary) {
  Abandon();
  modified_.reset();
  failed_ = false;
  target_ = FollowLinks(FullPath(SystemPath(target)));
  if (target_.empty()) return false;
  const Target found = Examine(target_);
  if (found == Target::kRefused || !ChooseTemporary(temporary) || !CreateTemporary()) return false;
  if (found == Target::kReplaceable) CopyProperties(target_, file_.Get());
  return true;
}

bool NewFile::WriteAll(std::string_view bytes) {
  while (!bytes.empty() && !failed_) {
    DWORD written = 0;
    failed_ = !WriteSome(file_.Get(), bytes, &written) || written == 0;
    bytes.remove_prefix(written);
  }
  return !failed_;
}

bool NewFile::FlushBuffer() {
  const bool written = WriteAll(buffer_);
  buffer_.clear();
  return written;
}

bool NewFile::Write(std::string_view bytes) {
  if (!file_ || failed_) return false;
  if (buffer_.size() + bytes.size() > kBufferSize && !FlushBuffer()) return false;
  if (bytes.size() >= kBufferSize) return WriteAll(bytes);
  buffer_.append(bytes);
  return true;
}

bool NewFile::TakeTheName(Existing existing) {
  const Target found = Examine(target_);
  if (found == Target::kRefused) return false;
  if (found == Target::kReplaceable) CopyProperties(target_, file_.Get());
  if (modified_ && SetFileTime(file_.Get(), nullptr, nullptr, &*modified_) == 0) return false;
  if (!FlushToDisk(file_.Get())) return false;
  // Somebody who reads the old file, a virus scanner say, is soon done.
  return Persist(kLongestRenameMs, kLongestRenameMs,
                 [&] { return RenameOpenFile(file_.Get(), target_, existing == Existing::kReplace); });
}

bool NewFile::Commit(Existing existing) {
  if (!file_) return false;
  const bool done = !failed_ && FlushBuffer() && TakeTheName(existing);
  if (done) file_.Close();
  Abandon();
  return done;
}

void NewFile::Abandon() {
  if (file_) RemoveOpenFile(file_.Get());
  file_.Close();
  buffer_.clear();
}

struct FileReplacement::System {
  NewFile file;
};

FileReplacement::FileReplacement() = default;
FileReplacement::~FileReplacement() = default;
FileReplacement::FileReplacement(FileReplacement&&) noexcept = default;
FileReplacement& FileReplacement::operator=(FileReplacement&&) noexcept = default;

bool FileReplacement::Begin(const CString& target, const CString& temporary) {
  Abandon();
  system_ = std::make_unique<System>();
  return system_->file.Begin(target, temporary);
}

bool FileReplacement::Write(std::string_view bytes) { return system_ && system_->file.Write(bytes); }

bool FileReplacement::Commit() { return system_ && system_->file.Commit(NewFile::Existing::kReplace); }

void FileReplacement::Abandon() {
  if (system_) system_->file.Abandon();
}

bool ReplaceFileContent(const CString& target, std::string_view bytes) {
  FileReplacement file;
  return file.Begin(target) && file.Write(bytes) && file.Commit();
}

}  // namespace velmora
