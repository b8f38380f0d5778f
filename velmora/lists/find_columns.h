// Which column of a list is which: by its header, as the user says, or by position.
#ifndef VELMORA_LISTS_FIND_COLUMNS_H_
#define VELMORA_LISTS_FIND_COLUMNS_H_

#include <vector>

#include "velmora/lists/layout.h"
#include "velmora/lists/list_options.h"
#include "velmora/lists/rows.h"
#include "velmora/lists/titles.h"

namespace velmora {

// The layout of a list; the header, and lines of text above it, are then taken from `rows`. An empty list has
// a layout without columns. Throws a ListError when a required column is missing, and for a list without a
// header whose columns can be two things.
ListLayout FindColumns(const std::vector<Role>& roles, const ListOptions& options, RowReader* rows);

}  // namespace velmora

#endif  // VELMORA_LISTS_FIND_COLUMNS_H_
