#include "cli/output/creation_time.h"

#include <charconv>
#include <ctime>

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
  const std::optional<std::int64_t> fixed = FixedTime();
  return fixed ? *fixed : std::time(nullptr);
}

}  // namespace velmora::cli
