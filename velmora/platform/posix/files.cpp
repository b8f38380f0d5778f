#include "velmora/platform/files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>

#include "velmora/platform/posix/file_descriptor.h"
#include "velmora/platform/posix/file_replacement.h"
#include "velmora/platform/posix/native_path.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr size_t kCopyBuffer = size_t{64} << 10;

// A disk may hold any number here; these years can be written and counted in ticks.
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
  // The bits count also for a user who may write everything.
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

// Of an entry seen in a listing: a link that leads nowhere is an entry too. Whether it may be written is
// asked of its own bits only; another question to the system for each costs a third of the listing.
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

std::int64_t ReadSome(int fd, std::span<char> buffer) {
  for (;;) {
    const ssize_t count = read(fd, buffer.data(), buffer.size());
    if (count >= 0 || errno != EINTR) return count;
  }
}

// False for a folder, which opens but does not read.
bool Examine(int fd, std::uint64_t* size) {
  struct stat status {};
  if (fstat(fd, &status) != 0 || S_ISDIR(status.st_mode)) return false;
  *size = S_ISREG(status.st_mode) ? static_cast<std::uint64_t>(status.st_size) : 0;
  return true;
}

}  // namespace

std::optional<FileStatus> GetFileStatus(const CString& path) {
  return StatusAt(AT_FDCWD, NativePath(path).c_str());
}

bool FileOrFolderExists(const CString& path) {
  struct stat status {};
  return stat(NativePath(path).c_str(), &status) == 0;
}

bool CopyWholeFile(const CString& from, const CString& to, bool keep_existing) {
  const FileDescriptor source(open(NativePath(from).c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat status {};
  if (!source || fstat(source.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  if (keep_existing && FileOrFolderExists(to)) return false;
  NewFile copy;
  // A program stays one.
  if (!copy.Begin(NativePath(to), std::string(), 0666 | (status.st_mode & 0111))) return false;
  std::vector<char> buffer(kCopyBuffer);
  std::int64_t count = 0;
  while ((count = ReadSome(source.Get(), buffer)) > 0)
    if (!copy.Write(std::string_view(buffer.data(), static_cast<size_t>(count)))) return false;
  copy.SetModified(status.st_mtim);
  return count == 0 && copy.Commit(keep_existing ? NewFile::Existing::kKeep : NewFile::Existing::kReplace);
}

bool RemoveWholeFile(const CString& path) { return unlink(NativePath(path).c_str()) == 0; }

bool RemoveEmptyFolder(const CString& path) { return rmdir(NativePath(path).c_str()) == 0; }

bool MakeFolder(const CString& path) { return mkdir(NativePath(path).c_str(), 0777) == 0; }

std::vector<FoundFile> FindFiles(const CString& pattern) {
  const size_t separator = pattern.GetView().find_last_of(L"\\/");
  const int split = separator == std::wstring_view::npos ? -1 : static_cast<int>(separator);
  // "X:\" keeps its backslash, a root its only one.
  const CString folder_path = split < 0 ? CString(L".") : pattern.Left(split + 1);
  const CString name_pattern = pattern.Mid(split + 1);
  FileDescriptor folder(open(NativePath(folder_path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder || name_pattern.IsEmpty()) return {};
  // The listing takes a descriptor over; ours stays for the status of the entries.
  DIR* listing = fdopendir(fcntl(folder.Get(), F_DUPFD_CLOEXEC, 0));
  if (listing == nullptr) return {};
  std::vector<FoundFile> found;
  while (const dirent* entry = readdir(listing)) {
    const std::wstring name = TextFromName(entry->d_name);
    if (!MatchesWildcard(name, name_pattern.GetView())) continue;
    if (const auto status = StatusOfEntry(folder.Get(), entry->d_name))
      found.push_back({.name = std::wstring_view(name), .short_name = {}, .status = *status});
  }
  closedir(listing);
  const auto names = std::partition(found.begin(), found.end(), IsDotEntry);
  std::sort(found.begin(), names, ListsBefore);
  std::sort(names, found.end(), ListsBefore);
  return found;
}

struct InputFile::System {
  FileDescriptor owned;
  int fd = -1;
  std::uint64_t size = 0;
};

InputFile::InputFile() = default;
InputFile::~InputFile() = default;
InputFile::InputFile(InputFile&&) noexcept = default;
InputFile& InputFile::operator=(InputFile&&) noexcept = default;

bool InputFile::Open(const CString& path) {
  Close();
  auto opened = std::make_unique<System>();
  do {
    opened->owned = FileDescriptor(open(NativePath(path).c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC));
  } while (!opened->owned && errno == EINTR);
  opened->fd = opened->owned.Get();
  if (!opened->owned || !Examine(opened->fd, &opened->size)) return false;
  system_ = std::move(opened);
  return true;
}

bool InputFile::OpenStandardInput() {
  Close();
  auto opened = std::make_unique<System>();
  opened->fd = STDIN_FILENO;
  if (!Examine(opened->fd, &opened->size)) return false;
  system_ = std::move(opened);
  return true;
}

std::int64_t InputFile::Read(std::span<char> buffer) { return system_ ? ReadSome(system_->fd, buffer) : -1; }

std::uint64_t InputFile::Size() const { return system_ ? system_->size : 0; }

void InputFile::Close() { system_.reset(); }

CString PathFromSystem(std::string_view name) { return CString(TextFromNativePath(name)); }

std::string PathForDisplay(const CString& path) {
  if (const auto bytes = NativeBytes(path.GetView())) return *bytes;
  return ToUtf8(path);
}

}  // namespace velmora
