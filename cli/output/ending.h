// The ending of an output file's name, which decides what is written.
#ifndef VELMORA_CLI_OUTPUT_ENDING_H_
#define VELMORA_CLI_OUTPUT_ENDING_H_

#include <string>
#include <string_view>
#include <vector>

namespace velmora::cli {

// In lower case with its dot: ".csv". Empty for a name without one, for standard output, and for pipes and
// devices.
std::string EndingOf(const std::string& file);

// Throws a Refusal when the name has an ending that is not one of `known`; `what` is written there.
void RequireEnding(const std::string& file, const std::string& what, const std::vector<std::string>& known);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_OUTPUT_ENDING_H_
