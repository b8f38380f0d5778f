// What the library says to its user: message boxes and the status bar. Every box and every status
// text of the library passes here, so that a program can show them its own way.
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
// Shows the box its own way and returns the button pressed.
using MessageBoxHandler = std::function<int(const MessageBoxCall&)>;
// Returns the previous handler. An empty one restores the system's own box: the native one on Windows;
// elsewhere the text goes to standard error and the default button answers.
VELMORA_API MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler);

// Returns the button pressed. A box is owned by the calling thread's main window, and then brought to
// the foreground (MB_SETFOREGROUND); without such a window it has no owner. One without a caption of its
// own has the application's title.
VELMORA_API int ShowMessage(const CString& text, unsigned style = MB_OK | MB_ICONEXCLAMATION,
                            const CString& caption = CString());
// The same without an owner, whatever windows there are: the boxes of the settings files.
VELMORA_API int ShowOwnerlessMessage(const CString& text, unsigned style, const CString& caption);

// Shows a text in the first pane; false when the bar's window no longer exists.
using StatusBarHandler = std::function<bool(const CString&)>;
// Returns the previous handler. An empty one: no bar is registered, and nothing is shown.
VELMORA_API StatusBarHandler SetStatusBarHandler(StatusBarHandler handler);
VELMORA_API void ShowStatus(const CString& text);

}  // namespace velmora

#endif  // VELMORA_COMMON_MESSAGES_H_
