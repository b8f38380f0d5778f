// Notifications to a real window.
#include <gtest/gtest.h>

#include "velmora/link/dde_com.h"

namespace velmora {
namespace {

LRESULT CALLBACK KeepLast(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_USER) return DefWindowProcW(window, message, wParam, lParam);
  SetWindowLongPtrW(window, GWLP_USERDATA, static_cast<LONG_PTR>(wParam) * 100 + lParam);
  return 0;
}

TEST(HwndNotifyWindow, SendsToItsWindow) {
  WNDCLASSW kind = {};
  kind.lpfnWndProc = KeepLast;
  kind.lpszClassName = L"velmora-notified";
  RegisterClassW(&kind);
  const HWND window =
      CreateWindowW(kind.lpszClassName, L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  ASSERT_NE(window, nullptr);
  HwndNotifyWindow notified(window);
  notified.Notify(WM_USER, 1117, 7);
  EXPECT_EQ(GetWindowLongPtrW(window, GWLP_USERDATA), 111707);
  HwndNotifyWindow(nullptr).Notify(WM_USER, 1, 1);
  DestroyWindow(window);
}

}  // namespace
}  // namespace velmora
