// Who is told of the conversation's notifications: a window of the using program, or anything that
// stands for one.
#ifndef VELMORA_PLATFORM_NOTIFY_WINDOW_H_
#define VELMORA_PLATFORM_NOTIFY_WINDOW_H_

#include <cstdint>

#include "velmora/export.h"
#include "velmora/platform/types.h"

namespace velmora {

struct VELMORA_API NotifyWindow {
  virtual ~NotifyWindow() = default;
  virtual void Notify(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) = 0;
};

// A window by its handle. Each notification is sent (SendMessageW) and so has been handled when Notify
// returns; it waits for the window as long as that takes. Where there are no windows, and without a
// handle, nothing happens.
struct VELMORA_API HwndNotifyWindow : NotifyWindow {
  explicit HwndNotifyWindow(HWND handle) : window(handle) {}
  void Notify(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;

  HWND window;
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_NOTIFY_WINDOW_H_
