#include "velmora/platform/posix/new_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <thread>

#include "velmora/platform/posix/native_path.h"

namespace velmora {
namespace {

constexpr int kMostLinks = 40;
constexpr std::chrono::seconds kLongestWait{5};
constexpr std::chrono::milliseconds kPause{5};

// False when another open file holds the lock. True on disks without locks.
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

// Whether the name still refers to the open file.
bool NameIs(int folder, const char* name, int fd) {
  struct stat by_name {};
  struct stat open {};
  return fstatat(folder, name, &by_name, AT_SYMLINK_NOFOLLOW) == 0 && fstat(fd, &open) == 0 &&
         IsSameFile(by_name, open);
}

// Holds back from this thread the signals at which new files are removed.
class InterruptsHeld {
 public:
  InterruptsHeld() {
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, signal);
    pthread_sigmask(SIG_BLOCK, &held, &before_);
  }
  ~InterruptsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  InterruptsHeld(const InterruptsHeld&) = delete;
  InterruptsHeld& operator=(const InterruptsHeld&) = delete;

 private:
  sigset_t before_;
};

// More at once are written too, but are left behind by an interrupt.
std::array<ListedNewFile, 64> g_new_files;

enum class Leftover { kNone, kInUse, kBlocked };

// Removes a file of this name that a killed writer left.
Leftover RemoveLeftover(const FolderEntry& entry) {
  const int folder = entry.folder.Get();
  const char* const name = entry.name.c_str();
  const FileDescriptor file(openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  // A file that may not be read may have a writer of another user.
  if (!file)
    return errno == ENOENT ? Leftover::kNone : errno == EACCES ? Leftover::kInUse : Leftover::kBlocked;
  struct stat status {};
  if (fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return Leftover::kBlocked;
  if ((status.st_mode & 0222) == 0) return Leftover::kBlocked;
  if (!TryLock(file.Get())) return Leftover::kInUse;
  if (!NameIs(folder, name, file.Get())) return Leftover::kNone;
  return RemoveName(entry) == 0 ? Leftover::kNone : Leftover::kBlocked;
}

void CopyAccessList(int from, int to) {
  constexpr const char* kName = "system.posix_acl_access";
  std::array<char, 16384> list{};
  const ssize_t size = fgetxattr(from, kName, list.data(), list.size());
  if (size > 0) {
    fsetxattr(to, kName, list.data(), static_cast<size_t>(size), 0);
  } else if (size == 0 || errno == ENODATA) {
    fremovexattr(to, kName);  // inherited from the folder
  }
}

// Copies owner, group and permissions of the old file as far as permitted.
void CopyPermissions(const struct stat& old, int folder, const char* old_name, int to) {
  mode_t mode = old.st_mode & 0777;
  struct stat now {};
  const bool owned = fstat(to, &now) == 0 && now.st_uid == old.st_uid && now.st_gid == old.st_gid;
  if (!owned && fchown(to, old.st_uid, old.st_gid) != 0 && now.st_gid != old.st_gid &&
      fchown(to, static_cast<uid_t>(-1), old.st_gid) != 0) {
    // The group differs, so it gets the rights of others.
    mode = (mode & 0707U) | ((mode & 0007U) << 3);
  }
  const FileDescriptor from(openat(folder, old_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (from) CopyAccessList(from.Get(), to);
  (void)fchmod(to, mode);
}

}  // namespace

// With `follow_links` the entry that symbolic links lead to, which need not exist.
bool PosixNewFile::FindEntry(const std::string& path, bool follow_links, FolderEntry* entry) {
  std::string at = path;
  for (int links = 0; links <= kMostLinks; ++links) {
    const size_t slash = at.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : at.substr(0, slash + 1);
    entry->name = slash == std::string::npos ? at : at.substr(slash + 1);
    if (entry->name.empty() || entry->name == "." || entry->name == "..") return false;
    entry->folder_path = folder;
    entry->folder = FileDescriptor(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!entry->folder) return false;
    if (!follow_links) return true;
    std::array<char, PATH_MAX> link{};
    const ssize_t length = readlinkat(entry->folder.Get(), entry->name.c_str(), link.data(), link.size());
    if (length < 0) return errno == EINVAL || errno == ENOENT;  // not a link, or missing
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

PosixNewFile::Target PosixNewFile::Examine(const FolderEntry& entry, struct stat* status) {
  if (fstatat(entry.folder.Get(), entry.name.c_str(), status, AT_SYMLINK_NOFOLLOW) != 0)
    return errno == ENOENT ? Target::kAbsent : Target::kRefused;
  if (!S_ISREG(status->st_mode)) return Target::kRefused;
  // Without a write bit it is protected, even from users who can override that.
  if ((status->st_mode & 0222) == 0) return Target::kRefused;
  return faccessat(entry.folder.Get(), entry.name.c_str(), W_OK, 0) == 0 ? Target::kReplaceable
                                                                         : Target::kRefused;
}

bool PosixNewFile::IsTarget(const FolderEntry& entry) const {
  struct stat a {};
  struct stat b {};
  if (fstat(entry.folder.Get(), &a) == 0 && fstat(target_.folder.Get(), &b) == 0 && IsSameFile(a, b) &&
      entry.name == target_.name)
    return true;
  // The target is looked up first and kept open. Another writer's rename moves its temporary to the target,
  // never back, and no new file gets the number of an open one; the other way round its file is met under
  // both names.
  const FileDescriptor target(
      openat(target_.folder.Get(), target_.name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
  return target && fstat(target.Get(), &b) == 0 &&
         fstatat(entry.folder.Get(), entry.name.c_str(), &a, AT_SYMLINK_NOFOLLOW) == 0 && IsSameFile(a, b);
}

// A temporary that is the target itself would destroy the old file; TemporaryName is used instead.
bool PosixNewFile::ChooseTemporary(const std::string& temporary) {
  if (!temporary.empty()) {
    if (!FindEntry(temporary, /*follow_links=*/false, &temporary_)) return false;
    if (!IsTarget(temporary_)) return true;
  }
  temporary_.folder_path = target_.folder_path;
  temporary_.folder = FileDescriptor(fcntl(target_.folder.Get(), F_DUPFD_CLOEXEC, 0));
  const long longest = fpathconf(temporary_.folder.Get(), _PC_NAME_MAX);
  temporary_.name = TemporaryName<char>(target_.name, longest > 0 ? static_cast<size_t>(longest) : NAME_MAX);
  return static_cast<bool>(temporary_.folder);
}

// The same for every spelling of the path.
std::string PosixNewFile::HeldName() const {
  struct stat folder {};
  (void)fstat(temporary_.folder.Get(), &folder);
  return std::to_string(folder.st_dev) + "/" + std::to_string(folder.st_ino) + "/" + temporary_.name;
}

bool PosixNewFile::CreateTemporary(mode_t mode) {
  const std::string name = HeldName();
  const auto give_up = std::chrono::steady_clock::now() + kLongestWait;
  do {
    {
      const InterruptsHeld until_listed;
      file_ = FileDescriptor(CreateNew(temporary_, mode));
      if (!file_ && errno != EEXIST) return false;
      // Before it was locked another writer may have removed it as a leftover.
      if (file_ && TryLock(file_.Get()) && IsStillOurs()) {
        List();
        Hold(name);
        return true;
      }
      file_.Close();
    }
    const Leftover leftover = RemoveLeftover(temporary_);
    if (leftover == Leftover::kBlocked) return false;
    if (leftover == Leftover::kInUse) {
      if (IsHeldByThisThread(name)) return false;
      std::this_thread::sleep_for(kPause);
    }
  } while (std::chrono::steady_clock::now() < give_up);
  return false;
}

bool PosixNewFile::IsStillOurs() const {
  return NameIs(temporary_.folder.Get(), temporary_.name.c_str(), file_.Get());
}

void PosixNewFile::List() {
  for (ListedNewFile& entry : g_new_files) {
    if (entry.taken.exchange(true)) continue;
    entry.folder = temporary_.folder.Get();
    entry.file = file_.Get();
    temporary_.name.copy(entry.name.data(), NAME_MAX);
    entry.name[std::min<size_t>(temporary_.name.size(), NAME_MAX)] = '\0';
    entry.complete = true;
    listed_ = &entry;
    return;
  }
}

void PosixNewFile::Unlist() {
  if (listed_ == nullptr) return;
  listed_->complete = false;
  listed_->taken = false;
  listed_ = nullptr;
}

void RemoveNewFiles() {
  for (const ListedNewFile& entry : g_new_files)
    if (entry.complete && NameIs(entry.folder, entry.name.data(), entry.file))
      (void)RemoveNameInHandler(entry.folder, entry.name.data());
}

bool PosixNewFile::Begin(const std::string& target, const std::string& temporary, mode_t mode) {
  struct stat old {};
  if (!FindEntry(target, /*follow_links=*/true, &target_)) return false;
  const Target found = Examine(target_, &old);
  if (found == Target::kRefused || !ChooseTemporary(temporary)) return false;
  // At no moment with more permissions than the old file.
  if (!CreateTemporary(found == Target::kAbsent ? mode : old.st_mode & mode & 0777)) return false;
  if (found == Target::kReplaceable)
    CopyPermissions(old, target_.folder.Get(), target_.name.c_str(), file_.Get());
  return true;
}

size_t PosixNewFile::WriteSome(std::string_view bytes) {
  const ssize_t written = velmora::WriteSome(file_.Get(), temporary_, bytes);
  return written > 0 ? static_cast<size_t>(written) : 0;
}

bool PosixNewFile::RenameIntoPlace(Existing existing) {
  struct stat old {};
  const Target found = Examine(target_, &old);
  if (found == Target::kRefused) return false;
  if (found == Target::kReplaceable)
    CopyPermissions(old, target_.folder.Get(), target_.name.c_str(), file_.Get());
  if (modified_) {
    const std::array<timespec, 2> times = {timespec{0, UTIME_OMIT}, *modified_};
    if (futimens(file_.Get(), times.data()) != 0) return false;
  }
  if (FlushToDisk(file_.Get(), temporary_) != 0 || !IsStillOurs()) return false;
  const auto take = existing == Existing::kKeep ? RenameToFreeName : RenameOver;
  if (take(temporary_, target_) != 0) return false;
  // A failure to flush the folder does not undo the rename.
  (void)FlushFolder(target_);
  Unlist();
  file_.Close();
  return true;
}

// Removes the name while the lock is held, so that another writer's new file is not removed.
PosixNewFile::~PosixNewFile() {
  if (file_ && IsStillOurs()) (void)RemoveName(temporary_);
  Unlist();
}

std::unique_ptr<NewFile> MakeNewFile(const CString& target, const CString& temporary) {
  const std::string own_temporary = NativePath(temporary);
  if (own_temporary.empty() && !temporary.IsEmpty()) return nullptr;
  auto file = std::make_unique<PosixNewFile>();
  if (!file->Begin(NativePathToCreate(target), own_temporary, 0666)) return nullptr;
  return file;
}

}  // namespace velmora
