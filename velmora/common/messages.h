// Message boxes and the status bar. All messages of the library go through these functions, so that a program
// can show them itself.
#ifndef VELMORA_COMMON_MESSAGES_H_
#define VELMORA_COMMON_MESSAGES_H_

#include <functional>

#include "velmora/export.h"
#include "velmora/platform/types.h"
#include "velmora/text/string.h"

namespace velmora {

// A box to be shown.
struct MessageBoxCall {
  CString text;     // for the user
  unsigned style;   // a sum of MB_OK, ...
  CString caption;  // its title
};
// Shows the box and returns the button pressed.
using MessageBoxHandler = std::function<int(const MessageBoxCall&)>;
// Lets a program show the boxes; returns the previous handler. An empty handler restores the default: the
// system's message box on Windows; on other systems the text on standard error and the default button. One
// handler for the process: set it before other threads use the library.
VELMORA_API MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler);

// Shows a message box and returns the button pressed (IDOK, ...). The box is owned by the calling thread's
// main window and then set to the foreground (MB_SETFOREGROUND); without such a window it has no owner. An
// empty caption means the application's title.
VELMORA_API int ShowMessage(const CString& text, unsigned style = MB_OK | MB_ICONEXCLAMATION,
                            const CString& caption = CString());
// The same, never with an owner: for the boxes of the settings files.
VELMORA_API int ShowOwnerlessMessage(const CString& text, unsigned style, const CString& caption);

// Shows a text in the first pane; false when the bar's window no longer exists.
using StatusBarHandler = std::function<bool(const CString&)>;
// Lets a program show these texts; returns the previous handler. With an empty handler, as at the start,
// nothing is shown. Threads as above.
VELMORA_API StatusBarHandler SetStatusBarHandler(StatusBarHandler handler);
// Passes a text to the handler.
VELMORA_API void ShowStatus(const CString& text);

}  // namespace velmora

#endif  // VELMORA_COMMON_MESSAGES_H_
