// The new file of a replacement. FileReplacement and CopyWholeFile share it.
//
// The new file is open without sharing from the moment it is made until it has its final name, which it
// takes through its handle: no other program can come in between. Whoever can remove one knows that
// its writer is gone; whoever cannot, waits.
#ifndef VELMORA_PLATFORM_WIN32_FILE_REPLACEMENT_H_
#define VELMORA_PLATFORM_WIN32_FILE_REPLACEMENT_H_

#include <optional>
#include <string>
#include <string_view>

#include "velmora/platform/win32/system_file.h"

namespace velmora {

class NewFile {
 public:
  enum class Existing { kReplace, kKeep };

  NewFile() = default;
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() { Abandon(); }

  // An empty `temporary` means a name of our own.
  bool Begin(const CString& target, const CString& temporary);
  bool Write(std::string_view bytes);
  void SetModified(const FILETIME& modified) { modified_ = modified; }
  bool Commit(Existing existing);
  void Abandon();

 private:
  bool ChooseTemporary(const CString& temporary);
  bool CreateTemporary();
  bool ClearTheWay(bool* pause);
  bool WriteAll(std::string_view bytes);
  bool FlushBuffer();
  bool TakeTheName(Existing existing);

  std::wstring target_;
  std::wstring temporary_;
  FileHandle file_;
  std::string buffer_;
  std::optional<FILETIME> modified_;
  int refusals_left_ = 0;  // of a folder that seems to take no file
  bool failed_ = false;
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_WIN32_FILE_REPLACEMENT_H_
