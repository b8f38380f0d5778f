// The library's message boxes on a terminal.
#ifndef VELMORA_CLI_QUESTIONS_H_
#define VELMORA_CLI_QUESTIONS_H_

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

}  // namespace velmora::cli

#endif  // VELMORA_CLI_QUESTIONS_H_
