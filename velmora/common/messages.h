// Message boxes and the status bar. All messages of the library go through these functions, so that a program
// can show them itself.
#ifndef VELMORA_COMMON_MESSAGES_H_
#define VELMORA_COMMON_MESSAGES_H_

#include <functional>

#include "velmora/export.h"
#include "velmora/platform/types.h"
#include "velmora/text/string.h"

namespace velmora {

struct MessageBoxCall {
  CString text;
  unsigned style;
  CString caption;
};
// Shows the box and returns the button pressed.
using MessageBoxHandler = std::function<int(const MessageBoxCall&)>;
// Returns the previous handler. An empty handler restores the default: the system's message box on Windows;
// on other systems the text on standard error and the default button.
VELMORA_API MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler);

// Returns the button pressed. The box is owned by the calling thread's main window and then set to the
// foreground (MB_SETFOREGROUND); without such a window it has no owner. An empty caption means the
// application's title.
VELMORA_API int ShowMessage(const CString& text, unsigned style = MB_OK | MB_ICONEXCLAMATION,
                            const CString& caption = CString());
// The same, never with an owner: for the boxes of the settings files.
VELMORA_API int ShowOwnerlessMessage(const CString& text, unsigned style, const CString& caption);

// Shows a text in the first pane; false when the bar's window no longer exists.
using StatusBarHandler = std::function<bool(const CString&)>;
// Returns the previous handler. With an empty handler nothing is shown.
VELMORA_API StatusBarHandler SetStatusBarHandler(StatusBarHandler handler);
VELMORA_API void ShowStatus(const CString& text);

}  // namespace velmora

#endif  // VELMORA_COMMON_MESSAGES_H_
