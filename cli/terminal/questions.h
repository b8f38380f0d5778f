// The library's message boxes on a terminal.
#ifndef VELMORA_CLI_TERMINAL_QUESTIONS_H_
#define VELMORA_CLI_TERMINAL_QUESTIONS_H_

#include <string>
#include <vector>

#include "velmora/common/messages.h"
#include "velmora/text/string.h"

namespace velmora::cli {

// While an object of it exists, message boxes of the library are printed on standard error. A question is
// answered with yes: the command has asked it before, in its own language (Confirm).
class TerminalMessages {
 public:
  // Paths in `paths` that occur in a message are shown as the system writes them.
  explicit TerminalMessages(std::vector<CString> paths = {});
  ~TerminalMessages();
  TerminalMessages(const TerminalMessages&) = delete;
  TerminalMessages& operator=(const TerminalMessages&) = delete;

 private:
  MessageBoxHandler before_;
};

// A question of the command's own. Returns when `yes` is set or the user answers yes on the terminal;
// throws a Refusal otherwise. `option` sets `yes`.
void Confirm(const std::string& question, bool yes, const std::string& option = "--yes");

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_QUESTIONS_H_
