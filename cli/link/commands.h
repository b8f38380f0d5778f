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

void AddLinkCommands(CLI::App& app);

struct LinkOptions {
  std::vector<std::string> texts;  // send
  std::string project;             // send
  std::string script;              // serve
  bool once = false;               // serve: until the first client has gone
  std::int64_t count = 0;          // listen: until so many have come; 0: without end
  OutputOptions output;
};

void LinkSend(const LinkOptions& options);
void LinkListen(const LinkOptions& options);
void LinkServe(const LinkOptions& options);

// How long a command sleeps before it looks whether it is to end.
inline constexpr int kTurn = 100;  // ms

}  // namespace velmora::cli

#endif  // VELMORA_CLI_LINK_COMMANDS_H_
