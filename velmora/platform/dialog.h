// The system's own message box.
#ifndef VELMORA_PLATFORM_DIALOG_H_
#define VELMORA_PLATFORM_DIALOG_H_

#include "velmora/text/string.h"

namespace velmora {

// The style's default button, the answer where nobody can press one.
int DefaultButton(unsigned style);

// Whether the calling thread has a main window that can own a box; false on systems without windows.
bool HasMainWindow();

// Shows the box, `owned` by the thread's main window, and returns the button pressed. On systems without
// windows prints caption and text on standard error and returns the style's default button.
int NativeMessageBox(const CString& text, unsigned style, const CString& caption, bool owned);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_DIALOG_H_
