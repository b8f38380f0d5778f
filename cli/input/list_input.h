// What a command passes on of a list that it reads: notes to the user, and columns to the result.
#ifndef VELMORA_CLI_INPUT_LIST_INPUT_H_
#define VELMORA_CLI_INPUT_LIST_INPUT_H_

#include <optional>
#include <string>
#include <vector>

#include "cli/output/records.h"
#include "velmora/common/finding.h"
#include "velmora/lists/layout.h"

namespace velmora::cli {

// A line on standard error for each note on the file.
void WarnOf(const std::string& file, const Findings& notes);
// The same, where there is one.
void WarnOf(const std::string& file, const std::optional<Finding>& note);

// `ours` behind the columns that the list carries, which only CSV and JSON show. A title that is one of ours
// or comes twice gets "list_" before it, and then a number behind it.
std::vector<Column> WithCarried(const ListLayout& layout, std::vector<Column> ours);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_INPUT_LIST_INPUT_H_
