#include "velmora/platform/system_command_line.h"

#include <algorithm>
#include <cwchar>

#include "velmora/platform/types.h"

namespace velmora {

CString SystemCommandLine() { return GetCommandLineW(); }

void SetSystemCommandLine(const CString& text) {
  wchar_t* const buffer = GetCommandLineW();
  static const size_t room = std::wcslen(buffer);
  const std::wstring_view view = text.GetView();
  if (view.size() > room || view.find(L'\0') != std::wstring_view::npos) return;
  *std::copy(view.begin(), view.end(), buffer) = L'\0';
}

}  // namespace velmora
