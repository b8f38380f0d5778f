#include "velmora/platform/shell_folders.h"

#include "velmora/platform/types.h"

#include <shlobj.h>

#include <string>

namespace velmora {

CString UserApplicationData() {
  wchar_t folder[MAX_PATH] = L"";
  const HRESULT result =
      SHGetFolderPathW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT, folder);
  return result == S_OK ? CString(folder) : CString();
}

CString UnregisteredUserData() { return {}; }

bool ReadEnvironment(const wchar_t* name, CString* value) {
  std::wstring text(256, L'\0');
  for (;;) {
    SetLastError(ERROR_SUCCESS);
    const DWORD length = GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size()));
    if (length == 0 && GetLastError() != ERROR_SUCCESS) return false;
    if (length < text.size()) {
      *value = CString(std::wstring_view(text).substr(0, length));
      return true;
    }
    text.resize(length);
  }
}

}  // namespace velmora
