// A time as the date and the time of day in UTC, which are the same wherever they are written.
#ifndef VELMORA_TEXT_UTC_TEXT_H_
#define VELMORA_TEXT_UTC_TEXT_H_

#include <cstdint>
#include <string>

namespace velmora {

// Of seconds since 1970; the year is one of four digits.
std::string UtcDate(std::int64_t seconds);  // "2026-11-22"
std::string UtcTime(std::int64_t seconds);  // "09:30:00"

}  // namespace velmora

#endif  // VELMORA_TEXT_UTC_TEXT_H_
