#include "velmora/common/messages.h"

#include <utility>

#include "velmora/common/string_table.h"
#include "velmora/platform/dialog.h"

namespace velmora {
namespace {

constexpr unsigned kApplicationTitle = 57344;

MessageBoxHandler& BoxHandler() {
  static MessageBoxHandler handler;
  return handler;
}

StatusBarHandler& BarHandler() {
  static StatusBarHandler handler;
  return handler;
}

int Show(const MessageBoxCall& call, bool owned) {
  // A copy, so that a handler may replace itself while it runs.
  if (const MessageBoxHandler handler = BoxHandler()) return handler(call);
  return NativeMessageBox(call.text, call.style, call.caption, owned);
}

}  // namespace

MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler) {
  return std::exchange(BoxHandler(), std::move(handler));
}

int ShowMessage(const CString& text, unsigned style, const CString& caption) {
  const bool owned = HasMainWindow();
  const CString title = caption.IsEmpty() ? LoadText(LibraryModule(), kApplicationTitle) : caption;
  return Show({text, owned ? style | MB_SETFOREGROUND : style, title}, owned);
}

int ShowOwnerlessMessage(const CString& text, unsigned style, const CString& caption) {
  return Show({text, style, caption}, false);
}

StatusBarHandler SetStatusBarHandler(StatusBarHandler handler) {
  return std::exchange(BarHandler(), std::move(handler));
}

void ShowStatus(const CString& text) {
  if (const StatusBarHandler handler = BarHandler()) handler(text);
}

}  // namespace velmora
