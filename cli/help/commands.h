// `velmora help` and `velmora version`.
#ifndef VELMORA_CLI_HELP_COMMANDS_H_
#define VELMORA_CLI_HELP_COMMANDS_H_

#include <string>

namespace CLI {
class App;
}

namespace velmora::cli {

// `app` is the command with all its other verbs.
void AddHelpCommands(CLI::App& app);

// Text on standard output, wrapped on a terminal.
void PrintText(const std::string& text);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_HELP_COMMANDS_H_
