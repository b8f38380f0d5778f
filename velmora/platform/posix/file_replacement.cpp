#include "velmora/platform/posix/file_replacement.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <thread>

#include "velmora/platform/files.h"
#include "velmora/platform/posix/native_path.h"
#include "velmora/platform/temporary_name.h"

namespace velmora {
namespace {

constexpr size_t kBufferSize = size_t{64} << 10;
constexpr int kMostLinks = 40;
constexpr std::chrono::seconds kLongestWait{5};
constexpr std::chrono::milliseconds kPause{5};

// What changes the disk goes through these.

int CreateNew(int folder, const char* name, mode_t mode) {
  return openat(folder, name, O_CREAT | O_EXCL | O_RDWR | O_NOFOLLOW | O_CLOEXEC, mode);
}

ssize_t WriteSome(int fd, std::string_view bytes) { return write(fd, bytes.data(), bytes.size()); }

bool FlushToDisk(int fd) {
  while (fsync(fd) != 0) {
    if (errno == EINTR) continue;
    return errno == EINVAL;  // a disk that cannot be told to
  }
  return true;
}

bool RenameOver(int from_folder, const char* from, int to_folder, const char* to) {
  return renameat(from_folder, from, to_folder, to) == 0;
}

bool RenameToFreeName(int from_folder, const char* from, int to_folder, const char* to) {
  if (renameat2(from_folder, from, to_folder, to, RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // Disks without that step: a second name, which cannot replace one either, then away with the first.
  if (linkat(from_folder, from, to_folder, to, 0) != 0) return false;
  unlinkat(from_folder, from, 0);
  return true;
}

bool RemoveName(int folder, const char* name) { return unlinkat(folder, name, 0) == 0; }

// False when another open file holds the lock. A disk without locks grants every one.
bool TryLock(int fd) {
  while (flock(fd, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    return errno != EWOULDBLOCK;
  }
  return true;
}

bool IsSameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Whether the name still is the open file.
bool NameIs(int folder, const char* name, int fd) {
  struct stat by_name {};
  struct stat open {};
  return fstatat(folder, name, &by_name, AT_SYMLINK_NOFOLLOW) == 0 && fstat(fd, &open) == 0 &&
         IsSameFile(by_name, open);
}

enum class Way { kClear, kTaken, kBlocked };

// Makes room for a new file of this name: removes one whose writer is gone.
Way ClearTheWay(int folder, const char* name) {
  const FileDescriptor left(openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  // One that may not be read belongs to somebody who may be writing it.
  if (!left) return errno == ENOENT ? Way::kClear : errno == EACCES ? Way::kTaken : Way::kBlocked;
  struct stat status {};
  if (fstat(left.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return Way::kBlocked;
  if ((status.st_mode & 0222) == 0) return Way::kBlocked;
  if (!TryLock(left.Get())) return Way::kTaken;
  if (!NameIs(folder, name, left.Get())) return Way::kClear;
  return RemoveName(folder, name) ? Way::kClear : Way::kBlocked;
}

void CopyAccessList(int from, int to) {
  constexpr const char* kName = "system.posix_acl_access";
  std::array<char, 16384> list{};
  const ssize_t size = fgetxattr(from, kName, list.data(), list.size());
  if (size > 0) {
    fsetxattr(to, kName, list.data(), static_cast<size_t>(size), 0);
  } else if (size == 0 || errno == ENODATA) {
    fremovexattr(to, kName);  // one that came from the folder
  }
}

// Owner, group and permissions of the old file, as far as we may.
void CopyPermissions(const struct stat& old, int folder, const char* old_name, int to) {
  mode_t mode = old.st_mode & 0777;
  struct stat now {};
  const bool owned = fstat(to, &now) == 0 && now.st_uid == old.st_uid && now.st_gid == old.st_gid;
  if (!owned && fchown(to, old.st_uid, old.st_gid) != 0 && now.st_gid != old.st_gid &&
      fchown(to, static_cast<uid_t>(-1), old.st_gid) != 0) {
    // The group is another one, which gets no more than everybody.
    mode = (mode & 0707U) | ((mode & 0007U) << 3);
  }
  const FileDescriptor from(openat(folder, old_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (from) CopyAccessList(from.Get(), to);
  (void)fchmod(to, mode);
}

}  // namespace

// `follow_links`: the place of what the path stands for in the end, which need not exist.
bool NewFile::FindPlace(const std::string& path, bool follow_links, Place* place) {
  std::string at = path;
  for (int links = 0; links <= kMostLinks; ++links) {
    const size_t slash = at.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : at.substr(0, slash + 1);
    place->name = slash == std::string::npos ? at : at.substr(slash + 1);
    if (place->name.empty() || place->name == "." || place->name == "..") return false;
    place->folder = FileDescriptor(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!place->folder) return false;
    if (!follow_links) return true;
    std::array<char, PATH_MAX> link{};
    const ssize_t length = readlinkat(place->folder.Get(), place->name.c_str(), link.data(), link.size());
    if (length < 0) return errno == EINVAL || errno == ENOENT;  // no link, or nothing there
    if (static_cast<size_t>(length) == link.size()) return false;
    const std::string_view target(link.data(), static_cast<size_t>(length));
    if (target.starts_with('/')) {
      at = target;
    } else {
      at = folder;
      at += '/';
      at += target;
    }
  }
  return false;
}

NewFile::Target NewFile::Examine(const Place& place, struct stat* status) {
  if (fstatat(place.folder.Get(), place.name.c_str(), status, AT_SYMLINK_NOFOLLOW) != 0)
    return errno == ENOENT ? Target::kAbsent : Target::kRefused;
  if (!S_ISREG(status->st_mode)) return Target::kRefused;
  // Without a write bit it is protected, also from a user who may write everything.
  if ((status->st_mode & 0222) == 0) return Target::kRefused;
  return faccessat(place.folder.Get(), place.name.c_str(), W_OK, 0) == 0 ? Target::kReplaceable
                                                                         : Target::kRefused;
}

bool NewFile::IsTarget(const Place& place) const {
  struct stat a {};
  struct stat b {};
  if (fstat(place.folder.Get(), &a) == 0 && fstat(target_.folder.Get(), &b) == 0 && IsSameFile(a, b) &&
      place.name == target_.name)
    return true;
  return fstatat(place.folder.Get(), place.name.c_str(), &a, AT_SYMLINK_NOFOLLOW) == 0 &&
         fstatat(target_.folder.Get(), target_.name.c_str(), &b, AT_SYMLINK_NOFOLLOW) == 0 &&
         IsSameFile(a, b);
}

// A temporary that is the target itself would be the end of the old file: then we take our own name.
bool NewFile::ChooseTemporary(const std::string& temporary) {
  if (!temporary.empty()) {
    if (!FindPlace(temporary, /*follow_links=*/false, &temporary_)) return false;
    if (!IsTarget(temporary_)) return true;
  }
  temporary_.folder = FileDescriptor(fcntl(target_.folder.Get(), F_DUPFD_CLOEXEC, 0));
  const long longest = fpathconf(temporary_.folder.Get(), _PC_NAME_MAX);
  temporary_.name = TemporaryName<char>(target_.name, longest > 0 ? static_cast<size_t>(longest) : NAME_MAX);
  return static_cast<bool>(temporary_.folder);
}

bool NewFile::CreateTemporary(mode_t mode) {
  const int folder = temporary_.folder.Get();
  const char* name = temporary_.name.c_str();
  const auto give_up = std::chrono::steady_clock::now() + kLongestWait;
  do {
    file_ = FileDescriptor(CreateNew(folder, name, mode));
    if (file_) {
      // Between the two steps somebody may have taken it for a leftover.
      if (TryLock(file_.Get()) && IsStillOurs()) return true;
      file_.Close();
    } else if (errno != EEXIST && errno != EINTR) {
      return false;
    }
    const Way way = ClearTheWay(folder, name);
    if (way == Way::kBlocked) return false;
    if (way == Way::kTaken) std::this_thread::sleep_for(kPause);
  } while (std::chrono::steady_clock::now() < give_up);
  return false;
}

bool NewFile::IsStillOurs() const {
  return NameIs(temporary_.folder.Get(), temporary_.name.c_str(), file_.Get());
}

bool NewFile::Begin(const std::string& target, const std::string& temporary, mode_t mode) {
  Abandon();
  buffer_.clear();
  modified_.reset();
  failed_ = false;
  struct stat old {};
  if (!FindPlace(target, /*follow_links=*/true, &target_)) return false;
  const Target found = Examine(target_, &old);
  if (found == Target::kRefused || !ChooseTemporary(temporary)) return false;
  // Never more open than the old file, not for a moment.
  if (!CreateTemporary(found == Target::kAbsent ? mode : old.st_mode & mode & 0777)) return false;
  if (found == Target::kReplaceable)
    CopyPermissions(old, target_.folder.Get(), target_.name.c_str(), file_.Get());
  return true;
}

bool NewFile::WriteAll(std::string_view bytes) {
  while (!bytes.empty() && !failed_) {
    const ssize_t written = WriteSome(file_.Get(), bytes);
    if (written > 0) {
      bytes.remove_prefix(static_cast<size_t>(written));
    } else if (written == 0 || errno != EINTR) {
      failed_ = true;
    }
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
  struct stat old {};
  const Target found = Examine(target_, &old);
  if (found == Target::kRefused) return false;
  if (found == Target::kReplaceable)
    CopyPermissions(old, target_.folder.Get(), target_.name.c_str(), file_.Get());
  if (modified_) {
    const std::array<timespec, 2> times = {timespec{0, UTIME_OMIT}, *modified_};
    if (futimens(file_.Get(), times.data()) != 0) return false;
  }
  if (!FlushToDisk(file_.Get()) || !IsStillOurs()) return false;
  const auto rename = existing == Existing::kKeep ? RenameToFreeName : RenameOver;
  if (!rename(temporary_.folder.Get(), temporary_.name.c_str(), target_.folder.Get(), target_.name.c_str()))
    return false;
  // The file has its name now; a folder that cannot be flushed changes nothing about that.
  const FileDescriptor folder(openat(target_.folder.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) FlushToDisk(folder.Get());
  return true;
}

bool NewFile::Commit(Existing existing) {
  if (!file_) return false;
  const bool done = !failed_ && FlushBuffer() && TakeTheName(existing);
  if (done) file_.Close();
  Abandon();
  return done;
}

// The name goes while the lock still holds, so that nobody's new file is removed in its place.
void NewFile::Abandon() {
  if (file_ && IsStillOurs()) RemoveName(temporary_.folder.Get(), temporary_.name.c_str());
  file_.Close();
  temporary_.folder.Close();
  target_.folder.Close();
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
  const std::string own_temporary = NativePath(temporary);
  if (own_temporary.empty() && !temporary.IsEmpty()) return false;
  return system_->file.Begin(NativePath(target), own_temporary, 0666);
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
