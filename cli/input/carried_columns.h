// The columns of a list that are not the command's, carried to its result.
#ifndef VELMORA_CLI_INPUT_CARRIED_COLUMNS_H_
#define VELMORA_CLI_INPUT_CARRIED_COLUMNS_H_

#include <vector>

#include "cli/output/records.h"
#include "velmora/lists/layout.h"

namespace velmora::cli {

// `ours` behind the columns that the list carries, which only CSV and JSON show. A title that is one of ours
// or comes twice gets "list_" before it, and then a number behind it.
std::vector<Column> WithCarried(const ListLayout& layout, std::vector<Column> ours);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_INPUT_CARRIED_COLUMNS_H_
