// The receiver of the conversation's notifications: a window of the client, or a class of its own.
#ifndef VELMORA_PLATFORM_NOTIFY_WINDOW_H_
#define VELMORA_PLATFORM_NOTIFY_WINDOW_H_

#include <cstdint>

#include "velmora/export.h"
#include "velmora/platform/types.h"

namespace velmora {

// Derive from it to receive notifications; CDdeCom::m_pNotifyWnd points to it.
struct VELMORA_TEMPLATE_API NotifyWindow {
  virtual ~NotifyWindow() = default;
  // Called on the thread that handles the conversation, with WM_USER, the notification's number (1117, ...)
  // and its value (docs/conversation.md).
  virtual void Notify(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) = 0;
};

// A window by its handle. Notify sends the message (SendMessageW) and returns when the window has handled it.
// Does nothing with a null handle and on systems without windows.
struct VELMORA_API HwndNotifyWindow : NotifyWindow {
  explicit HwndNotifyWindow(HWND handle) : window(handle) {}  // does not own the window
  void Notify(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;

  HWND window;  // null: nothing is sent
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_NOTIFY_WINDOW_H_
