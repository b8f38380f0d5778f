#include "cli/report/creation_time.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>

#include "cli/terminal/error.h"
#include "velmora/platform/shell_folders.h"

namespace velmora::cli {
namespace {

constexpr std::int64_t kLatest = 253402300799;  // the end of the year 9999

}  // namespace

std::int64_t CreationTime() {
  CString given;
  if (!ReadEnvironment(L"SOURCE_DATE_EPOCH", &given) || given.IsEmpty()) {
    using std::chrono::seconds;
    return std::chrono::duration_cast<seconds>(std::chrono::system_clock::now().time_since_epoch()).count();
  }
  const std::string text = ToUtf8(given);
  std::int64_t seconds = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (error != std::errc() || stop != text.data() + text.size() || seconds < 0 || seconds > kLatest)
    throw Refusal("SOURCE_DATE_EPOCH is " + Quoted(text) + "; it is to be the seconds since 1970, or unset");
  return seconds;
}

std::string TimeText(std::int64_t seconds) {
  using namespace std::chrono;
  const sys_seconds time{std::chrono::seconds(seconds)};
  const sys_days day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(time - day);
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text.data();
}

}  // namespace velmora::cli
