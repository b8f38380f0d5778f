// What the command needs to know of the terminal it runs in.
#ifndef VELMORA_CLI_TERMINAL_TERMINAL_H_
#define VELMORA_CLI_TERMINAL_TERMINAL_H_

namespace velmora::cli {

bool StandardErrorIsTerminal();
bool StandardInputIsTerminal();

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_TERMINAL_H_
