// The new file of a replacement, by the system's own paths. FileReplacement and CopyWholeFile share it.
//
// The new file is locked from the moment it is made until its descriptor closes. Whoever finds one
// without a lock knows that its writer is gone and removes it; whoever finds it locked waits.
#ifndef VELMORA_PLATFORM_POSIX_FILE_REPLACEMENT_H_
#define VELMORA_PLATFORM_POSIX_FILE_REPLACEMENT_H_

#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>

#include "velmora/platform/posix/file_descriptor.h"

namespace velmora {

class NewFile {
 public:
  enum class Existing { kReplace, kKeep };

  NewFile() = default;
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() { Abandon(); }

  // An empty `temporary` means a name of our own. `mode` is for a target that does not exist yet; the
  // user's mask applies.
  bool Begin(const std::string& target, const std::string& temporary, mode_t mode);
  bool Write(std::string_view bytes);
  void SetModified(const timespec& modified) { modified_ = modified; }
  bool Commit(Existing existing);
  void Abandon();

 private:
  // A name in an open folder.
  struct Place {
    FileDescriptor folder;
    std::string name;
  };
  enum class Target { kAbsent, kReplaceable, kRefused };

  static bool FindPlace(const std::string& path, bool follow_links, Place* place);
  static Target Examine(const Place& place, struct stat* status);
  bool ChooseTemporary(const std::string& temporary);
  bool IsTarget(const Place& place) const;
  bool CreateTemporary(mode_t mode);
  bool IsStillOurs() const;
  bool WriteAll(std::string_view bytes);
  bool FlushBuffer();
  bool TakeTheName(Existing existing);

  Place target_;
  Place temporary_;
  FileDescriptor file_;
  std::string buffer_;
  std::optional<timespec> modified_;
  bool failed_ = false;
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_FILE_REPLACEMENT_H_
