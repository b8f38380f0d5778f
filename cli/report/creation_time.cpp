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

std::optional<std::int64_t> FixedTime() {
  CString given;
  if (!ReadEnvironment(L"SOURCE_DATE_EPOCH", &given) || given.IsEmpty()) return std::nullopt;
  const std::string text = ToUtf8(given);
  std::int64_t seconds = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (error != std::errc() || stop != text.data() + text.size() || seconds < 0 || seconds > kLatest)
    throw Refusal("SOURCE_DATE_EPOCH is not a number of seconds since 1970: " + Quoted(text));
  return seconds;
}

std::int64_t CreationTime() {
  using std::chrono::seconds;
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const std::optional<std::int64_t> fixed = FixedTime();
  return fixed ? *fixed : std::chrono::duration_cast<seconds>(now).count();
}

std::string TimeText(std::int64_t seconds) {
  const std::chrono::seconds of_day(seconds % 86'400);
  const std::chrono::hh_mm_ss clock(of_day);
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "T%02d:%02d:%02dZ", static_cast<int>(clock.hours().count()),
                static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()));
  return DateText(seconds) + text.data();
}

std::string DateText(std::int64_t seconds) {
  using namespace std::chrono;
  const year_month_day date(floor<days>(sys_seconds{std::chrono::seconds(seconds)}));
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
  return text.data();
}

}  // namespace velmora::cli
