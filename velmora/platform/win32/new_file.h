// The new file of a replacement.
//
// The new file is open without sharing from the moment it is made until it has its final name, which it
// takes through its handle: no other program can come in between. Whoever can remove one knows that
// its writer is gone; whoever cannot, waits.
#ifndef VELMORA_PLATFORM_WIN32_NEW_FILE_H_
#define VELMORA_PLATFORM_WIN32_NEW_FILE_H_

#include <optional>
#include <string>
#include <string_view>

#include "velmora/platform/new_file.h"
#include "velmora/platform/win32/system_file.h"

namespace velmora {

class Win32NewFile final : public NewFile {
 public:
  ~Win32NewFile() override;

  // An empty `temporary` means a name of our own. Once.
  bool Begin(const CString& target, const CString& temporary);
  // Else it is the time of writing.
  void SetModified(const FILETIME& modified) { modified_ = modified; }

 protected:
  size_t WriteSome(std::string_view bytes) override;
  bool RenameIntoPlace(Existing existing) override;

 private:
  bool ChooseTemporary(const CString& temporary);
  bool CreateTemporary();
  bool ClearTheWay(bool* pause);

  std::wstring target_;
  std::wstring temporary_;
  FileHandle file_;
  std::optional<FILETIME> modified_;
  int refusals_left_ = 0;  // of a folder that seems to take no file
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_WIN32_NEW_FILE_H_
