// The library's message boxes on a terminal.
#ifndef VELMORA_CLI_QUESTIONS_H_
#define VELMORA_CLI_QUESTIONS_H_

#include "velmora/common/messages.h"

namespace velmora::cli {

// While it lives, texts of the library go to standard error and its questions are asked there. Without a
// terminal the default button answers, and the line says so.
class TerminalMessages {
 public:
  TerminalMessages();
  ~TerminalMessages();
  TerminalMessages(const TerminalMessages&) = delete;
  TerminalMessages& operator=(const TerminalMessages&) = delete;

 private:
  MessageBoxHandler before_;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_QUESTIONS_H_
