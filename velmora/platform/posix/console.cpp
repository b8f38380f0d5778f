#include "velmora/platform/console.h"

#include <unistd.h>

#include <csignal>

namespace velmora {
namespace {

volatile std::sig_atomic_t g_requested = 0;

extern "C" void RecordInterrupt(int) { g_requested = 1; }

void SetHandler(void (*handler)(int), int flags) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = flags;
  for (const int signal : {SIGINT, SIGTERM}) sigaction(signal, &action, nullptr);
}

}  // namespace

std::vector<std::string> ProgramArguments(int argc, char** argv) {
  return std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc);
}

void PrepareStandardStreams() {}

bool StandardInputIsTerminal() { return isatty(STDIN_FILENO) != 0; }
bool StandardErrorIsTerminal() { return isatty(STDERR_FILENO) != 0; }

Interrupt::Interrupt() { SetHandler(RecordInterrupt, static_cast<int>(SA_RESETHAND)); }
Interrupt::~Interrupt() { SetHandler(SIG_DFL, 0); }
bool Interrupt::Requested() { return g_requested != 0; }

}  // namespace velmora
