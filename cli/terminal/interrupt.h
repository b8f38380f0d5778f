// The user's wish to end a command that runs until then.
#ifndef VELMORA_CLI_TERMINAL_INTERRUPT_H_
#define VELMORA_CLI_TERMINAL_INTERRUPT_H_

namespace velmora::cli {

// From its making on, Ctrl-C (and what asks a program to end) is remembered instead of ending the process;
// asked a second time, the process ends as usual.
class Interrupt {
 public:
  Interrupt();
  ~Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;

  static bool Asked();
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_INTERRUPT_H_
