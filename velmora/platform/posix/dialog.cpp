#include "velmora/platform/dialog.h"

#include <cstdio>
#include <string>

namespace velmora {

bool HasMainWindow() { return false; }

int NativeMessageBox(const CString& text, unsigned style, const CString& caption, bool /*owned*/) {
  const std::string line = ToUtf8(caption) + ": " + ToUtf8(text) + "\n";
  // One call, so that lines of several threads do not interleave.
  (void)std::fwrite(line.data(), 1, line.size(), stderr);
  return DefaultButton(style);
}

}  // namespace velmora
