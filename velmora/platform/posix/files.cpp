#include "velmora/platform/files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <memory>

#include "velmora/platform/disk_hook.h"
#include "velmora/platform/posix/disk_calls.h"
#include "velmora/platform/posix/file_descriptor.h"
#include "velmora/platform/posix/native_path.h"
#include "velmora/platform/posix/new_file.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

// A disk may hold any value; this range can be formatted and counted in ticks.
std::time_t Bounded(std::time_t seconds) {
  return std::clamp<std::time_t>(seconds, -11'644'473'600, 900'000'000'000);
}

std::int64_t TicksSince1601(const timespec& time) {
  return (std::int64_t{Bounded(time.tv_sec)} + 11'644'473'600) * 10'000'000 + time.tv_nsec / 100;
}

FileTime LocalTime(std::time_t seconds) {
  const std::time_t bounded = Bounded(seconds);
  std::tm local{};
  if (localtime_r(&bounded, &local) == nullptr) return {};
  return {.year = local.tm_year + 1900,
          .month = local.tm_mon + 1,
          .day = local.tm_mday,
          .hour = local.tm_hour,
          .minute = local.tm_min,
          .second = local.tm_sec};
}

FileStatus StatusOf(const struct stat& status, bool writable) {
  FileStatus result;
  result.kind = S_ISREG(status.st_mode)   ? FileKind::kFile
                : S_ISDIR(status.st_mode) ? FileKind::kFolder
                                          : FileKind::kOther;
  if (result.kind == FileKind::kFile) result.size = static_cast<std::uint64_t>(status.st_size);
  // The bits count even for users who can override them.
  result.write_protected = !writable || (status.st_mode & 0222) == 0;
  result.modified = TicksSince1601(status.st_mtim);
  result.modified_local = LocalTime(status.st_mtim.tv_sec);
  return result;
}

std::optional<FileStatus> StatusAt(int folder, const char* name) {
  struct stat status {};
  if (fstatat(folder, name, &status, 0) != 0) return std::nullopt;
  return StatusOf(status, faccessat(folder, name, W_OK, 0) == 0);
}

// Of an entry in a listing, also a dangling link. Write protection is taken from its permission bits:
// another system call for each entry would cost a third of the listing.
std::optional<FileStatus> StatusOfEntry(int folder, const char* name) {
  struct stat status {};
  if (fstatat(folder, name, &status, 0) != 0 && fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
    return std::nullopt;
  return StatusOf(status, /*writable=*/true);
}

bool IsDotEntry(const FoundFile& file) { return file.name == L"." || file.name == L".."; }

bool ListsBefore(const FoundFile& a, const FoundFile& b) {
  const int order = CompareInCapitals(a.name.GetView(), b.name.GetView());
  return order != 0 ? order < 0 : a.name < b.name;
}

bool AreOneFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// False for a folder, which opens but does not read.
bool Examine(int fd, InputFile::Accept accept, std::uint64_t* size) {
  struct stat status {};
  if (fstat(fd, &status) != 0 || S_ISDIR(status.st_mode)) return false;
  if (accept == InputFile::Accept::kRegularFiles && !S_ISREG(status.st_mode)) return false;
  *size = S_ISREG(status.st_mode) ? static_cast<std::uint64_t>(status.st_size) : 0;
  return true;
}

}  // namespace

std::optional<FileStatus> GetFileStatus(const CString& path) {
  return StatusAt(AT_FDCWD, NativePath(path).c_str());
}

NoStatus WhyNoStatus(const CString& path) {
  struct stat status {};
  if (stat(NativePath(path).c_str(), &status) == 0) return NoStatus::kMissing;
  if (errno == EACCES) return NoStatus::kNoPermission;
  return errno == ENAMETOOLONG ? NoStatus::kPathTooLong : NoStatus::kMissing;
}

bool FileOrFolderExists(const CString& path) {
  struct stat status {};
  return stat(NativePath(path).c_str(), &status) == 0;
}

std::optional<CString> RealPath(const CString& path) {
  struct Free {
    void operator()(char* text) const { std::free(text); }
  };
  const std::unique_ptr<char, Free> found(realpath(NativePath(path).c_str(), nullptr));
  if (!found) return std::nullopt;
  // Name by name: a name may contain a backslash.
  std::string_view rest = found.get();
  std::wstring real;
  while (!rest.empty()) {
    rest.remove_prefix(1);
    if (rest.empty()) break;  // the root
    const std::string_view name = rest.substr(0, rest.find('/'));
    real += L'\\' + TextFromName(name);
    rest.remove_prefix(name.size());
  }
  return CString(std::wstring_view(real));
}

bool IsSameFile(const CString& a, const CString& b) {
  const FileDescriptor first(open(NativePath(a).c_str(), O_PATH | O_CLOEXEC));
  struct stat x {};
  struct stat y {};
  return first && fstat(first.Get(), &x) == 0 && stat(NativePath(b).c_str(), &y) == 0 && AreOneFile(x, y);
}

bool IsStandardInput(const CString& path) {
  struct stat x {};
  struct stat y {};
  return fstat(STDIN_FILENO, &x) == 0 && S_ISREG(x.st_mode) && stat(NativePath(path).c_str(), &y) == 0 &&
         AreOneFile(x, y);
}

bool CopyWholeFile(const CString& from, const CString& to, bool keep_existing) {
  const std::string path = NativePath(from);
  const FileDescriptor source(OpenToRead(path, O_NONBLOCK));
  struct stat status {};
  if (!source || fstat(source.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  if (keep_existing && FileOrFolderExists(to)) return false;
  PosixNewFile copy;
  // Keeps the execute bits.
  if (!copy.Begin(NativePathToCreate(to), std::string(), 0666 | (status.st_mode & 0111))) return false;
  copy.SetModified(status.st_mtim);
  return copy.WriteAllFrom([&](std::span<char> buffer) { return ReadSome(source.Get(), path, buffer); }) &&
         copy.Commit(keep_existing ? NewFile::Existing::kKeep : NewFile::Existing::kReplace);
}

bool RemoveWholeFile(const CString& path) {
  const std::string native = NativePath(path);
  struct stat status {};
  const bool is_protected =
      lstat(native.c_str(), &status) == 0 && S_ISREG(status.st_mode) && (status.st_mode & 0222) == 0;
  return !is_protected && RemoveFile(native) == 0;
}

bool RemoveEmptyFolder(const CString& path) { return RemoveFolder(NativePath(path)) == 0; }

bool MakeFolder(const CString& path) { return MakeOneFolder(NativePathToCreate(path), 0777) == 0; }

std::vector<FoundFile> FindFiles(const CString& pattern) {
  const size_t separator = pattern.GetView().find_last_of(PathSeparators());
  const int split = separator == std::wstring_view::npos ? -1 : static_cast<int>(separator);
  // The folder keeps its last backslash, for "X:\" and for the root.
  const CString folder_path = split < 0 ? CString(L".") : pattern.Left(split + 1);
  const CString name_pattern = pattern.Mid(split + 1);
  FileDescriptor folder(open(NativePath(folder_path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder || name_pattern.IsEmpty()) return {};
  // fdopendir takes over its descriptor; `folder` is for the status of the entries.
  DIR* listing = fdopendir(fcntl(folder.Get(), F_DUPFD_CLOEXEC, 0));
  if (listing == nullptr) return {};
  std::vector<FoundFile> found;
  while (const dirent* entry = readdir(listing)) {
    const std::wstring name = TextFromName(entry->d_name);
    if (!MatchesWildcard(name, name_pattern.GetView())) continue;
    if (const auto status = StatusOfEntry(folder.Get(), entry->d_name))
      found.push_back({.name = std::wstring_view(name),
                       .short_name = {},
                       .status = *status,
                       .may_be_link = entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN});
  }
  closedir(listing);
  const auto names = std::partition(found.begin(), found.end(), IsDotEntry);
  std::sort(found.begin(), names, ListsBefore);
  std::sort(names, found.end(), ListsBefore);
  return found;
}

struct InputFile::System {
  FileDescriptor owned;
  std::string path;
  int fd = -1;
  std::uint64_t size = 0;
};

InputFile::InputFile() = default;
InputFile::~InputFile() = default;
InputFile::InputFile(InputFile&&) noexcept = default;
InputFile& InputFile::operator=(InputFile&&) noexcept = default;

bool InputFile::Open(const CString& path, Accept accept) {
  Close();
  // So that opening a pipe does not wait for its writer.
  const int more_flags = accept == Accept::kRegularFiles ? O_NONBLOCK : 0;
  auto opened = std::make_unique<System>();
  // Most files are named as they are on the disk. One call is reported to a hook, with the file's own name.
  if (CurrentDiskHook() == nullptr) {
    opened->path = PathAsGiven(path);
    opened->owned = FileDescriptor(OpenToRead(opened->path, more_flags));
  }
  if (!opened->owned) {
    opened->path = NativePath(path);
    opened->owned = FileDescriptor(OpenToRead(opened->path, more_flags));
  }
  opened->fd = opened->owned.Get();
  if (!opened->owned || !Examine(opened->fd, accept, &opened->size)) return false;
  system_ = std::move(opened);
  return true;
}

bool InputFile::OpenStandardInput() {
  Close();
  auto opened = std::make_unique<System>();
  opened->fd = STDIN_FILENO;
  const bool done = Examine(opened->fd, Accept::kAnything, &opened->size);
  ReportOpened({}, done);
  if (!done) return false;
  system_ = std::move(opened);
  return true;
}

std::int64_t InputFile::Read(std::span<char> buffer) {
  return system_ ? ReadSome(system_->fd, system_->path, buffer) : -1;
}

std::uint64_t InputFile::Size() const { return system_ ? system_->size : 0; }

void InputFile::Close() { system_.reset(); }

std::wstring_view PathSeparators() { return L"\\/"; }

std::optional<std::string> DrivePath(std::string_view name) { return PlainDrivePath(PathFromSystem(name)); }

CString PathFromSystem(std::string_view name) { return CString(TextFromNativePath(name)); }

CString PathAsSpelled(std::string_view name) { return CString(kAsSpelled) + PathFromSystem(name); }

std::string PathForDisplay(const CString& path) {
  if (const auto bytes = NativeBytes(path.GetView())) return *bytes;
  return ToUtf8(path);
}

}  // namespace velmora
