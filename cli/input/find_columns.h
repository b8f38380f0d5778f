// Which column of a list is which: by its header, as the user says, or by position.
#ifndef VELMORA_CLI_INPUT_FIND_COLUMNS_H_
#define VELMORA_CLI_INPUT_FIND_COLUMNS_H_

#include <vector>

#include "cli/input/layout.h"
#include "cli/input/list_options.h"
#include "cli/input/rows.h"
#include "cli/input/titles.h"

namespace velmora::cli {

// The layout of a list; the header, and lines of text above it, are then taken from `rows`. An empty list has
// a layout without columns. Throws a Refusal when a required column is missing, and for a list without a
// header whose columns can be two things.
ListLayout FindColumns(const std::vector<Role>& roles, const ListOptions& options, RowReader* rows);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_INPUT_FIND_COLUMNS_H_
