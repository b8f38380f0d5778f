// When a report counts as made.
#ifndef VELMORA_CLI_REPORT_CREATION_TIME_H_
#define VELMORA_CLI_REPORT_CREATION_TIME_H_

#include <cstdint>
#include <optional>
#include <string>

namespace velmora::cli {

// Seconds since 1970 UTC that the environment variable SOURCE_DATE_EPOCH fixes, so that a report is made
// again with the same bytes; nothing where it is not set. Throws a Refusal when it holds no such number.
std::optional<std::int64_t> FixedTime();
// That, else now.
std::int64_t CreationTime();

// "2026-11-22T09:30:00Z"
std::string TimeText(std::int64_t seconds);
// "2026-11-22"
std::string DateText(std::int64_t seconds);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_REPORT_CREATION_TIME_H_
