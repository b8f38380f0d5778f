// What the user should know about a list.
#ifndef VELMORA_CLI_INPUT_LIST_NOTES_H_
#define VELMORA_CLI_INPUT_LIST_NOTES_H_

#include <optional>
#include <string>

#include "velmora/common/finding.h"

namespace velmora::cli {

// A line on standard error for each.
void WarnOf(const std::string& list, const Findings& notes);
// The same, where there is one.
void WarnOf(const std::string& list, const std::optional<Finding>& note);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_INPUT_LIST_NOTES_H_
