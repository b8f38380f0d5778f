// The new file of a replacement, by the system's own paths.
//
// The new file is locked from the moment it is made until its descriptor closes. Whoever finds one
// without a lock knows that its writer is gone and removes it; whoever finds it locked waits.
#ifndef VELMORA_PLATFORM_POSIX_NEW_FILE_H_
#define VELMORA_PLATFORM_POSIX_NEW_FILE_H_

#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>

#include "velmora/platform/new_file.h"
#include "velmora/platform/posix/disk_calls.h"
#include "velmora/platform/posix/file_descriptor.h"

namespace velmora {

class PosixNewFile final : public NewFile {
 public:
  ~PosixNewFile() override;

  // An empty `temporary` means a name of our own. `mode` is for a target that does not exist yet; the
  // user's mask applies. Once.
  bool Begin(const std::string& target, const std::string& temporary, mode_t mode);
  // Else it is the time of writing.
  void SetModified(const timespec& modified) { modified_ = modified; }

 protected:
  size_t WriteSome(std::string_view bytes) override;
  bool RenameIntoPlace(Existing existing) override;

 private:
  enum class Target { kAbsent, kReplaceable, kRefused };

  static bool FindPlace(const std::string& path, bool follow_links, Place* place);
  static Target Examine(const Place& place, struct stat* status);
  bool ChooseTemporary(const std::string& temporary);
  bool IsTarget(const Place& place) const;
  bool CreateTemporary(mode_t mode);
  bool IsStillOurs() const;

  Place target_;
  Place temporary_;
  FileDescriptor file_;
  std::optional<timespec> modified_;
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_NEW_FILE_H_
