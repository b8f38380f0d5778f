// The new file of a replacement: created beside the target, filled and renamed over it. FileReplacement and
// CopyWholeFile share it; creating and renaming are the system's (posix/new_file.h, win32/new_file.h).
#ifndef VELMORA_PLATFORM_NEW_FILE_H_
#define VELMORA_PLATFORM_NEW_FILE_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "velmora/text/string.h"

namespace velmora {

class NewFile {
 public:
  enum class Existing { kReplace, kKeep };

  NewFile() = default;
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  // Removes the file unless Commit has given it the target's name.
  virtual ~NewFile();

  // Buffered. After one failure all later ones fail and Commit does too.
  bool Write(std::string_view bytes);
  // Writes the bytes that `read` puts into its buffer until it returns 0; a negative number is a failure.
  bool WriteAllFrom(const std::function<std::int64_t(std::span<char>)>& read);
  // Once. True when the file is on the disk and has the target's name.
  bool Commit(Existing existing);

 protected:
  // Returns how many bytes were written, 0 on failure.
  virtual size_t WriteSome(std::string_view bytes) = 0;
  // On failure the new file keeps its own name.
  virtual bool RenameIntoPlace(Existing existing) = 0;

  // Notes that this thread has the new file of this name, until the object is destroyed.
  void Hold(const std::string& name);
  // Whether this thread has it already and would wait for itself.
  static bool IsHeldByThisThread(const std::string& name);

 private:
  bool WriteAll(std::string_view bytes);

  std::string buffer_;
  std::string held_;
  bool failed_ = false;
};

// Removes the new files that are not yet renamed, before the process is ended from outside. May be called in
// a signal handler (posix) or a handler's thread (win32), also while other threads write; they can no longer
// commit what was removed.
void RemoveNewFiles();

// Null when the target cannot be opened for writing (FileReplacement::Begin). An empty `temporary` selects
// TemporaryName.
std::unique_ptr<NewFile> MakeNewFile(const CString& target, const CString& temporary);

// The name of the new file beside its target, at most `longest` units long; a hash of the target's name
// replaces one that is too long. The same target always gives the same name, so that two programs that
// replace one file notice each other, and the new file of a killed program is found again.
template <class Char>
std::basic_string<Char> TemporaryName(std::basic_string_view<Char> target, size_t longest) {
  const auto ascii = [](std::string_view text) { return std::basic_string<Char>(text.begin(), text.end()); };
  const auto suffix = ascii(".velmora-new");
  if (target.size() + suffix.size() <= longest) return std::basic_string<Char>(target) + suffix;
  std::uint64_t number = 0xCBF29CE484222325U;  // FNV-1a
  for (const Char unit : target)
    number = (number ^ static_cast<std::make_unsigned_t<Char>>(unit)) * 0x100000001B3U;
  std::basic_string<Char> digits;
  for (int shift = 60; shift >= 0; shift -= 4)
    digits += static_cast<Char>("0123456789abcdef"[(number >> shift) & 0xFU]);
  return digits + suffix;
}

}  // namespace velmora

#endif  // VELMORA_PLATFORM_NEW_FILE_H_
