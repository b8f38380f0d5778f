#include "cli/terminal/interrupt.h"

#include <csignal>

namespace velmora::cli {
namespace {

volatile std::sig_atomic_t g_asked = 0;

constexpr int kSignals[] = {SIGINT, SIGTERM};

extern "C" void Remember(int) { g_asked = 1; }

void Handle(void (*handler)(int), int flags) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = flags;
  for (const int signal : kSignals) sigaction(signal, &action, nullptr);
}

}  // namespace

Interrupt::Interrupt() { Handle(Remember, static_cast<int>(SA_RESETHAND)); }
Interrupt::~Interrupt() { Handle(SIG_DFL, 0); }
bool Interrupt::Asked() { return g_asked != 0; }

}  // namespace velmora::cli
