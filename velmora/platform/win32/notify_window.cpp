#include "velmora/platform/notify_window.h"

namespace velmora {

void HwndNotifyWindow::Notify(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
  if (window != nullptr) SendMessageW(window, message, wParam, lParam);
}

}  // namespace velmora
