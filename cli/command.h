// The velmora command: its areas and verbs, and what happens to errors.
#ifndef VELMORA_CLI_COMMAND_H_
#define VELMORA_CLI_COMMAND_H_

#include <string>
#include <vector>

namespace velmora::cli {

// Runs the command with the arguments that follow its name, in UTF-8 (on Linux also bytes of unknown
// encoding). Returns the exit status: 0 done, 1 not found or refused, 2 wrong usage.
int RunCommand(std::vector<std::string> arguments);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_COMMAND_H_
