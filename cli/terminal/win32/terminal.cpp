#include "cli/terminal/terminal.h"

#include <windows.h>

namespace velmora::cli {
namespace {

bool IsConsole(DWORD which) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(which), &mode) != 0;
}

}  // namespace

bool StandardErrorIsTerminal() { return IsConsole(STD_ERROR_HANDLE); }
bool StandardInputIsTerminal() { return IsConsole(STD_INPUT_HANDLE); }

}  // namespace velmora::cli
