#include "velmora/platform/dialog.h"

#include "velmora/platform/types.h"

namespace velmora {
namespace {

BOOL CALLBACK TakeMainWindow(HWND window, LPARAM found) {
  if (!IsWindowVisible(window) || GetWindow(window, GW_OWNER) != nullptr) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

// The thread's first visible window without an owner.
HWND MainWindow() {
  HWND found = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), TakeMainWindow, reinterpret_cast<LPARAM>(&found));
  return found;
}

}  // namespace

bool HasMainWindow() { return MainWindow() != nullptr; }

int NativeMessageBox(const CString& text, unsigned style, const CString& caption, bool owned) {
  return MessageBoxW(owned ? MainWindow() : nullptr, text, caption, style);
}

}  // namespace velmora
