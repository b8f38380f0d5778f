// The library's message boxes on a terminal.
#ifndef VELMORA_CLI_TERMINAL_QUESTIONS_H_
#define VELMORA_CLI_TERMINAL_QUESTIONS_H_

#include <string>
#include <vector>

#include "velmora/common/messages.h"
#include "velmora/text/string.h"

namespace velmora::cli {

// While it lives, texts of the library go to standard error and its questions are asked there. Without a
// terminal the default button answers, and the line says so.
class TerminalMessages {
 public:
  // The texts name paths as the library spells them; those in `paths` are shown as the system does.
  explicit TerminalMessages(std::vector<CString> paths = {});
  ~TerminalMessages();
  TerminalMessages(const TerminalMessages&) = delete;
  TerminalMessages& operator=(const TerminalMessages&) = delete;

 private:
  MessageBoxHandler before_;
};

// A question of the command's own. Returns when it may go on: the user says so on the terminal, or `yes`
// did before. Throws a Refusal otherwise.
void Confirm(const std::string& question, bool yes);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_QUESTIONS_H_
