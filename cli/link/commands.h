// The verbs of `velmora link`.
#ifndef VELMORA_CLI_LINK_COMMANDS_H_
#define VELMORA_CLI_LINK_COMMANDS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "cli/output/records.h"

namespace CLI {
class App;
}

namespace velmora::cli {

void AddLinkCommands(CLI::App* link);

struct LinkOptions {
  std::vector<std::string> texts;  // send
  std::string project;             // send
  std::string script;              // serve
  bool once = false;               // serve: stop when the first client has disconnected
  std::int64_t count = 0;          // listen: stop after so many; 0: never
  OutputOptions output;
};

void LinkSend(const LinkOptions& options);
void LinkListen(const LinkOptions& options);
void LinkServe(const LinkOptions& options);

// Longest wait before a command checks whether it was interrupted.
inline constexpr int kPollInterval = 100;  // ms

}  // namespace velmora::cli

#endif  // VELMORA_CLI_LINK_COMMANDS_H_
