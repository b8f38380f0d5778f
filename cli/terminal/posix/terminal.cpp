#include "cli/terminal/terminal.h"

#include <unistd.h>

namespace velmora::cli {

bool StandardErrorIsTerminal() { return isatty(STDERR_FILENO) != 0; }
bool StandardInputIsTerminal() { return isatty(STDIN_FILENO) != 0; }

}  // namespace velmora::cli
