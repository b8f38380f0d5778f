// The options that say how a list is read.
#ifndef VELMORA_CLI_INPUT_LIST_OPTIONS_H_
#define VELMORA_CLI_INPUT_LIST_OPTIONS_H_

#include <vector>

#include "velmora/lists/list_options.h"
#include "velmora/lists/titles.h"

namespace CLI {
class App;
}

namespace velmora::cli {

// --columns, --delimiter, --decimal, --encoding, and --axes for points.
void AddListOptions(CLI::App* verb, const std::vector<Role>& roles, ListOptions* options);
// --only, for verbs that carry columns to the result.
void AddOnlyOption(CLI::App* verb, ListOptions* options);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_INPUT_LIST_OPTIONS_H_
