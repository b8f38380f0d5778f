#include "velmora/platform/real_path.h"

#include <string>

#include "velmora/platform/win32/system_file.h"

namespace velmora {

std::optional<CString> RealPath(const CString& path) {
  const FileHandle entry(CreateFileW(SystemPath(path), 0, kShareAll, nullptr, OPEN_EXISTING,
                                     FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!entry) return std::nullopt;
  std::wstring real(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetFinalPathNameByHandleW(entry.Get(), real.data(), static_cast<DWORD>(real.size()),
                                                   FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
    if (length == 0) return std::nullopt;
    const bool fits = length < real.size();
    real.resize(length);
    if (fits) return CString(std::wstring_view(real));
  }
}

}  // namespace velmora
