#include "velmora/platform/files.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "velmora/platform/disk_hook.h"
#include "velmora/platform/win32/disk_calls.h"
#include "velmora/platform/win32/new_file.h"
#include "velmora/platform/win32/system_file.h"
#include "velmora/text/codepage.h"

namespace velmora {
namespace {

constexpr DWORD kLongestWaitMs = 2000;
constexpr DWORD kLongestDenialMs = 50;

std::uint64_t Join(DWORD high, DWORD low) { return (std::uint64_t{high} << 32) | low; }

FileTime LocalTime(const FILETIME& time) {
  SYSTEMTIME utc{};
  SYSTEMTIME local{};
  if (!FileTimeToSystemTime(&time, &utc) || !SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local))
    return {};
  return {.year = local.wYear,
          .month = local.wMonth,
          .day = local.wDay,
          .hour = local.wHour,
          .minute = local.wMinute,
          .second = local.wSecond};
}

// `Data` is any of the system's records with these members.
template <class Data>
FileStatus StatusOf(const Data& data) {
  const DWORD attributes = data.dwFileAttributes;
  FileStatus status;
  status.kind = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileKind::kFolder
                : (attributes & FILE_ATTRIBUTE_DEVICE) != 0  ? FileKind::kOther
                                                             : FileKind::kFile;
  if (status.kind == FileKind::kFile) status.size = Join(data.nFileSizeHigh, data.nFileSizeLow);
  status.write_protected = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
  status.modified = static_cast<std::int64_t>(
      Join(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime));
  status.modified_local = LocalTime(data.ftLastWriteTime);
  return status;
}

// "NUL", "aux.txt" and similar names are devices in every folder.
bool NamesDevice(const wchar_t* path) {
  wchar_t full[MAX_PATH] = L"";
  const DWORD length = GetFullPathNameW(path, MAX_PATH, full, nullptr);
  return length > 4 && length < MAX_PATH && std::wstring_view(full, length).starts_with(LR"(\\.\)");
}

std::optional<FileStatus> StatusBehindLink(const wchar_t* path) {
  const FileHandle file(
      CreateFileW(path, 0, kShareAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION data{};
  if (!file || GetFileInformationByHandle(file.Get(), &data) == 0) return std::nullopt;
  return StatusOf(data);
}

FoundFile EntryOf(const WIN32_FIND_DATAW& data, const CString& folder) {
  FoundFile entry{.name = data.cFileName, .short_name = data.cAlternateFileName, .status = StatusOf(data)};
  entry.may_be_link = (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  if (entry.may_be_link) entry.status = StatusBehindLink(folder + entry.name).value_or(entry.status);
  return entry;
}

bool IsFolder(const wchar_t* path) {
  const DWORD attributes = GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Waits while another program replaces the file.
FileHandle OpenFileToRead(const wchar_t* path) {
  FileHandle file;
  if (IsFolder(path)) return file;
  Persist(kLongestWaitMs, kLongestDenialMs, [&] {
    file = OpenToRead(path);
    return static_cast<bool>(file);
  });
  return file;
}

FileHandle OpenToAsk(const CString& path) {
  return FileHandle(CreateFileW(SystemPath(path), 0, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

bool LeadToOneFile(HANDLE a, HANDLE b) {
  BY_HANDLE_FILE_INFORMATION x{};
  BY_HANDLE_FILE_INFORMATION y{};
  return GetFileInformationByHandle(a, &x) != 0 && GetFileInformationByHandle(b, &y) != 0 &&
         x.dwVolumeSerialNumber == y.dwVolumeSerialNumber && x.nFileIndexHigh == y.nFileIndexHigh &&
         x.nFileIndexLow == y.nFileIndexLow;
}

std::uint64_t SizeOf(HANDLE file) {
  LARGE_INTEGER size{};
  if (GetFileType(file) != FILE_TYPE_DISK || GetFileSizeEx(file, &size) == 0) return 0;
  return static_cast<std::uint64_t>(size.QuadPart);
}

}  // namespace

std::optional<FileStatus> GetFileStatus(const CString& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  const bool there = Persist(kLongestDenialMs, kLongestDenialMs, [&] {
    return GetFileAttributesExW(SystemPath(path), GetFileExInfoStandard, &data) != 0;
  });
  if (NamesDevice(SystemPath(path))) {
    FileStatus status;
    status.kind = FileKind::kOther;
    return status;
  }
  if (!there) return std::nullopt;
  if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return StatusBehindLink(SystemPath(path));
  return StatusOf(data);
}

NoStatus WhyNoStatus(const CString& path) {
  if (OpenToAsk(path)) return NoStatus::kMissing;
  const DWORD error = GetLastError();
  if (IsDenied(error)) return NoStatus::kNoPermission;
  return error == ERROR_FILENAME_EXCED_RANGE ? NoStatus::kPathTooLong : NoStatus::kMissing;
}

bool FileOrFolderExists(const CString& path) { return GetFileStatus(path).has_value(); }

bool IsSameFile(const CString& a, const CString& b) {
  const FileHandle first = OpenToAsk(a);
  const FileHandle second = OpenToAsk(b);
  return first && second && LeadToOneFile(first.Get(), second.Get());
}

bool IsStandardInput(const CString& path) {
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  if (GetFileType(input) != FILE_TYPE_DISK) return false;
  const FileHandle file = OpenToAsk(path);
  return file && LeadToOneFile(file.Get(), input);
}

std::optional<CString> RealPath(const CString& path) {
  const FileHandle entry = OpenToAsk(path);
  if (!entry) return std::nullopt;
  std::wstring real(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetFinalPathNameByHandleW(entry.Get(), real.data(), static_cast<DWORD>(real.size()),
                                                   FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
    if (length == 0) return std::nullopt;
    const bool fits = length < real.size();
    real.resize(length);
    if (fits) return CString(std::wstring_view(real)).TrimRight(L'\\');  // a root ends in one
  }
}

bool CopyWholeFile(const CString& from, const CString& to, bool keep_existing) {
  const std::wstring path = SystemPath(from);
  const FileHandle source = OpenFileToRead(path.c_str());
  FILETIME modified{};
  if (!source || GetFileType(source.Get()) != FILE_TYPE_DISK ||
      GetFileTime(source.Get(), nullptr, nullptr, &modified) == 0)
    return false;
  if (keep_existing && FileOrFolderExists(to)) return false;
  Win32NewFile copy;
  if (!copy.Begin(to, CString())) return false;
  copy.SetModified(modified);
  return copy.WriteAllFrom([&](std::span<char> buffer) { return ReadSome(source.Get(), path, buffer); }) &&
         copy.Commit(keep_existing ? NewFile::Existing::kKeep : NewFile::Existing::kReplace);
}

bool RemoveWholeFile(const CString& path) {
  return Persist(kLongestWaitMs, kLongestDenialMs, [&] { return RemoveFile(SystemPath(path)); });
}

bool RemoveEmptyFolder(const CString& path) { return RemoveFolder(SystemPath(path)); }

bool MakeFolder(const CString& path) { return MakeOneFolder(SystemPath(path)); }

std::vector<FoundFile> FindFiles(const CString& pattern) {
  const size_t separator = pattern.GetView().find_last_of(L"\\/:");
  const CString folder =
      separator == std::wstring_view::npos ? CString() : CString(pattern.GetView().substr(0, separator + 1));
  WIN32_FIND_DATAW data{};
  const HANDLE search = FindFirstFileW(SystemPath(pattern), &data);
  if (search == INVALID_HANDLE_VALUE) return {};
  std::vector<FoundFile> found;
  do {
    found.push_back(EntryOf(data, folder));
  } while (FindNextFileW(search, &data) != 0);
  FindClose(search);
  return found;
}

struct InputFile::System {
  FileHandle owned;
  std::wstring path;
  HANDLE handle = INVALID_HANDLE_VALUE;
};

InputFile::InputFile() = default;
InputFile::~InputFile() = default;
InputFile::InputFile(InputFile&&) noexcept = default;
InputFile& InputFile::operator=(InputFile&&) noexcept = default;

bool InputFile::Open(const CString& path, Accept accept) {
  Close();
  auto opened = std::make_unique<System>();
  opened->path = SystemPath(path);
  opened->owned = OpenFileToRead(opened->path.c_str());
  opened->handle = opened->owned.Get();
  if (!opened->owned) return false;
  if (accept == Accept::kRegularFiles && GetFileType(opened->handle) != FILE_TYPE_DISK) return false;
  system_ = std::move(opened);
  return true;
}

bool InputFile::OpenStandardInput() {
  Close();
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  const bool done = input != nullptr && input != INVALID_HANDLE_VALUE;
  ReportOpened({}, done);
  if (!done) return false;
  system_ = std::make_unique<System>();
  system_->handle = input;
  return true;
}

std::int64_t InputFile::Read(std::span<char> buffer) {
  return system_ ? ReadSome(system_->handle, system_->path, buffer) : -1;
}

std::uint64_t InputFile::Size() const { return system_ ? SizeOf(system_->handle) : 0; }

void InputFile::Close() { system_.reset(); }

std::wstring_view PathSeparators() { return L"\\"; }

std::optional<std::string> DrivePath(std::string_view) { return std::nullopt; }

CString PathFromSystem(std::string_view name) {
  std::wstring path = WideFromUtf8(name);
  std::replace(path.begin(), path.end(), L'/', L'\\');
  return CString(std::wstring_view(path));
}

CString PathAsSpelled(std::string_view name) { return PathFromSystem(name); }

std::string PathForDisplay(const CString& path) { return ToUtf8(path); }

}  // namespace velmora
