// The new file of a replacement: made beside the target, filled, and put in its place. FileReplacement and
// CopyWholeFile share it; how it is made and takes the name is the system's (posix/new_file.h,
// win32/new_file.h).
#ifndef VELMORA_PLATFORM_NEW_FILE_H_
#define VELMORA_PLATFORM_NEW_FILE_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "velmora/text/string.h"

namespace velmora {

class NewFile {
 public:
  enum class Existing { kReplace, kKeep };

  NewFile() = default;
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  // Removes it, unless it has the target's name by now.
  virtual ~NewFile() = default;

  // Buffered. After one failure all later ones fail and Commit does too.
  bool Write(std::string_view bytes);
  // Writes what `read` puts into its buffer until it returns 0; a negative number is a failure.
  bool WriteAllFrom(const std::function<std::int64_t(std::span<char>)>& read);
  // Once. True when the file is on the disk and has the target's name.
  bool Commit(Existing existing);

 protected:
  // How many bytes were written, 0 on failure.
  virtual size_t WriteSome(std::string_view bytes) = 0;
  // After it the new file is the target, or as it was.
  virtual bool RenameIntoPlace(Existing existing) = 0;

 private:
  bool WriteAll(std::string_view bytes);

  std::string buffer_;
  bool failed_ = false;
};

// Null when the target could not be opened for writing, see FileReplacement::Begin. An empty `temporary`
// means a name of our own.
std::unique_ptr<NewFile> MakeNewFile(const CString& target, const CString& temporary);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_NEW_FILE_H_
