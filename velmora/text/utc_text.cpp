#include "velmora/text/utc_text.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace velmora {

std::string UtcDate(std::int64_t seconds) {
  using namespace std::chrono;
  const year_month_day date(floor<days>(sys_seconds(std::chrono::seconds(seconds))));
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
  return text.data();
}

std::string UtcTime(std::int64_t seconds) {
  using namespace std::chrono;
  const sys_seconds time{std::chrono::seconds(seconds)};
  const hh_mm_ss clock(time - floor<days>(time));
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", static_cast<int>(clock.hours().count()),
                static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()));
  return text.data();
}

}  // namespace velmora
