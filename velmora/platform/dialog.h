// The system's own message box.
#ifndef VELMORA_PLATFORM_DIALOG_H_
#define VELMORA_PLATFORM_DIALOG_H_

#include "velmora/text/string.h"

namespace velmora {

// Whether the calling thread has a main window that can own a box. Never where there are no windows.
bool HasMainWindow();

// Shows the box, `owned` by the thread's main window when it has one, and returns the button pressed.
// Without windows the caption and the text go to standard error and the style's default button
// answers.
int NativeMessageBox(const CString& text, unsigned style, const CString& caption, bool owned);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_DIALOG_H_
