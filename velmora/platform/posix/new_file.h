// The new file of a replacement.
//
// It is locked from its creation until its descriptor closes. Another writer waits while it is locked; one
// without a lock was left by a killed program and is removed.
#ifndef VELMORA_PLATFORM_POSIX_NEW_FILE_H_
#define VELMORA_PLATFORM_POSIX_NEW_FILE_H_

#include <sys/stat.h>

#include <array>
#include <atomic>
#include <climits>
#include <optional>
#include <string>
#include <string_view>

#include "velmora/platform/new_file.h"
#include "velmora/platform/posix/disk_calls.h"
#include "velmora/platform/posix/file_descriptor.h"

namespace velmora {

// A new file as a signal handler finds it: nothing here is allocated or freed while it may look.
struct ListedNewFile {
  std::atomic<bool> taken = false;
  std::atomic<bool> complete = false;  // the members below are set
  int folder = -1;
  int file = -1;
  std::array<char, NAME_MAX + 1> name;
};

class PosixNewFile final : public NewFile {
 public:
  ~PosixNewFile() override;

  // Once. An empty `temporary` selects TemporaryName. `mode`, reduced by the user's mask, is for a target
  // that does not exist.
  bool Begin(const std::string& target, const std::string& temporary, mode_t mode);
  // Overrides the modification time.
  void SetModified(const timespec& modified) { modified_ = modified; }

 protected:
  size_t WriteSome(std::string_view bytes) override;
  bool RenameIntoPlace(Existing existing) override;

 private:
  enum class Target { kAbsent, kReplaceable, kRefused };

  static bool FindEntry(const std::string& path, bool follow_links, FolderEntry* entry);
  static Target Examine(const FolderEntry& entry, struct stat* status);
  bool ChooseTemporary(const std::string& temporary);
  bool IsTarget(const FolderEntry& entry) const;
  bool CreateTemporary(mode_t mode);
  bool IsStillOurs() const;
  void List();
  void Unlist();
  std::string HeldName() const;

  FolderEntry target_;
  FolderEntry temporary_;
  FileDescriptor file_;
  ListedNewFile* listed_ = nullptr;
  std::optional<timespec> modified_;
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_NEW_FILE_H_
