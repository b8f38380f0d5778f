// Wrong usage, explained with what was probably meant.
#ifndef VELMORA_CLI_HELP_USAGE_ERROR_H_
#define VELMORA_CLI_HELP_USAGE_ERROR_H_

#include <CLI/CLI.hpp>
#include <string>

namespace velmora::cli {

// The innermost area or verb that was recognised, and its words on the command line.
struct Understood {
  const CLI::App* app;
  std::string called_as;  // without "velmora"
};
Understood Deepest(const CLI::App& app);

// "align locate"; throws WrongUsage when there is no such area or verb.
Understood FindVerb(const CLI::App& app, const std::vector<std::string>& words);

// The parser's error as one line.
std::string UsageError(const CLI::App& app, const Understood& at, const CLI::ParseError& error);

// The help page of an area or a verb.
std::string HelpText(const Understood& verb);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_HELP_USAGE_ERROR_H_
