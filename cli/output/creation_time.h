// When a report or an export counts as made.
#ifndef VELMORA_CLI_OUTPUT_CREATION_TIME_H_
#define VELMORA_CLI_OUTPUT_CREATION_TIME_H_

#include <cstdint>
#include <optional>

namespace velmora::cli {

// Seconds since 1970 UTC that the environment variable SOURCE_DATE_EPOCH fixes, so that a file is made
// again with the same bytes; nothing where it is not set. Throws a Refusal when it holds no such number.
std::optional<std::int64_t> FixedTime();
// That, else now.
std::int64_t CreationTime();

}  // namespace velmora::cli

#endif  // VELMORA_CLI_OUTPUT_CREATION_TIME_H_
