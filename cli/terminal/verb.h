// A verb of an area of the command.
#ifndef VELMORA_CLI_TERMINAL_VERB_H_
#define VELMORA_CLI_TERMINAL_VERB_H_

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace velmora::cli {

// Adds a verb that calls `run` with the options.
template <class Options>
CLI::App* AddVerb(CLI::App* area, const char* name, const std::string& help,
                  const std::shared_ptr<Options>& options, void (*run)(const Options&)) {
  CLI::App* verb = area->add_subcommand(name, help);
  verb->callback([options, run] { run(*options); });
  return verb;
}

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_VERB_H_
