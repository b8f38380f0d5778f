// The new file of a replacement.
//
// It is open without sharing from its creation until it is renamed through its handle. Another writer waits
// while it cannot remove it; one that can be removed was left by a killed program.
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

  // Once. An empty `temporary` selects TemporaryName.
  bool Begin(const CString& target, const CString& temporary);
  // Overrides the modification time.
  void SetModified(const FILETIME& modified) { modified_ = modified; }
  // Before it is renamed.
  void Remove() const;

 protected:
  size_t WriteSome(std::string_view bytes) override;
  bool RenameIntoPlace(Existing existing) override;

 private:
  bool ChooseTemporary(const CString& temporary);
  bool CreateTemporary();
  bool RemoveLeftover(bool* pause);

  std::wstring target_;
  std::wstring temporary_;
  FileHandle file_;
  std::optional<FILETIME> modified_;
  int refusals_left_ = 0;  // attempts in a folder that denies new files
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_WIN32_NEW_FILE_H_
