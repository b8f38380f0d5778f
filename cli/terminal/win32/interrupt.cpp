#include "cli/terminal/interrupt.h"

#include <windows.h>

#include <atomic>

namespace velmora::cli {
namespace {

std::atomic<bool> g_asked = false;

// Comes on a thread of its own. False: the system ends the process.
BOOL WINAPI Remember(DWORD) { return g_asked.exchange(true) ? FALSE : TRUE; }

}  // namespace

Interrupt::Interrupt() { SetConsoleCtrlHandler(Remember, TRUE); }
Interrupt::~Interrupt() { SetConsoleCtrlHandler(Remember, FALSE); }
bool Interrupt::Asked() { return g_asked; }

}  // namespace velmora::cli
