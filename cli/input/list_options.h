// What a user says about a list: its columns, separator, decimal sign and encoding.
#ifndef VELMORA_CLI_INPUT_LIST_OPTIONS_H_
#define VELMORA_CLI_INPUT_LIST_OPTIONS_H_

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cli/input/fields.h"
#include "cli/input/titles.h"

namespace CLI {
class App;
}

namespace velmora::cli {

struct ListOptions {
  std::map<std::string, std::string> columns;  // a role's key: a title, or a number from 1
  char delimiter = 0;                          // 0: found from the first row
  std::optional<DecimalSign> decimal;          // nothing: either, and a point where commas separate
  std::optional<TextEncoding> encoding;        // of a file without a byte-order mark
  bool east_first = false;                     // northing and easting are exchanged
  bool only = false;                           // the list's other columns are not carried to the result
};

// --columns, --delimiter, --decimal, --encoding, and --axes for points.
void AddListOptions(CLI::App* verb, const std::vector<Role>& roles, ListOptions* options);
// --only, for verbs that carry columns to the result.
void AddOnlyOption(CLI::App* verb, ListOptions* options);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_INPUT_LIST_OPTIONS_H_
