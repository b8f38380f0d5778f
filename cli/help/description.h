// What the command can do, read from its parser. The manual pages, the completion of shells and the reference
// are made from it, so that each says what the command takes.
#ifndef VELMORA_CLI_HELP_DESCRIPTION_H_
#define VELMORA_CLI_HELP_DESCRIPTION_H_

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace velmora::cli {

struct OptionText {
  std::vector<std::string> names;  // "--shared", "--yes"; of a positional "FILE" alone
  bool positional = false;
  std::string value;  // what stands for the value, "LIST"; empty for a flag
  std::string help;
  std::string default_value;        // as the help says it
  std::vector<std::string> values;  // the only ones; empty: any
  std::string range;                // "0 to 2"
  std::vector<std::string> excludes;
  bool required = false;
  bool repeats = false;   // several values
  std::string completes;  // the mark of cli/terminal/completes.h
};

struct VerbText {
  std::string name;  // "list"
  std::string call;  // "codes stamp FILE list"; empty for the command itself
  std::string help;
  std::string footer;               // below the options
  std::vector<OptionText> options;  // positionals first
  std::vector<VerbText> verbs;
};

VerbText Describe(CLI::App& app);

// "velmora align locate FILE --points LIST [OPTIONS]"
std::string UsageLine(const VerbText& verb);
// "--points LIST"
std::string OptionHeading(const OptionText& option);

// The whole as JSON, with the program's name and version.
std::string DescriptionJson(const VerbText& command);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_HELP_DESCRIPTION_H_
