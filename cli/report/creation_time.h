// When a report counts as made.
#ifndef VELMORA_CLI_REPORT_CREATION_TIME_H_
#define VELMORA_CLI_REPORT_CREATION_TIME_H_

#include <cstdint>
#include <string>

namespace velmora::cli {

// Seconds since 1970 UTC: of the environment variable SOURCE_DATE_EPOCH, by which a build makes the same
// bytes again, else now. Throws a Refusal when the variable holds no such number.
std::int64_t CreationTime();

// "2026-11-22T09:30:00Z"; its first ten characters are the date.
std::string TimeText(std::int64_t seconds);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_REPORT_CREATION_TIME_H_
