#include "cli/terminal.h"

#include <windows.h>

namespace velmora::cli {

bool StandardErrorIsTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

}  // namespace velmora::cli
