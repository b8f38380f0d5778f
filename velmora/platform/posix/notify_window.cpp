#include "velmora/platform/notify_window.h"

namespace velmora {

void HwndNotifyWindow::Notify(unsigned, std::uintptr_t, std::intptr_t) {}

}  // namespace velmora
