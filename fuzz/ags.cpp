// AGS4 lists: reading them, and filling in stations.
#include "velmora/exchange/ags.h"

#include <optional>
#include <string>
#include <vector>

#include "fuzz/support/input.h"

namespace velmora::fuzz {
namespace {

using exchange::AgsPlace;

// A place for each row; nothing for a file that is refused.
std::optional<std::vector<AgsPlace>> PlacesOf(const std::string& bytes) {
  exchange::AgsRows rows(bytes);
  std::vector<AgsPlace> places;
  for (bool heading = true; rows.Next(); heading = false) {
    if (!heading) places.push_back({rows.Line(), 12.5, 12.5});
    for (size_t i = 0; i <= rows.Fields(); ++i)
      Require(rows.Field(i).size() <= 3 * bytes.size(), "a field of the file");
  }
  if (!rows.Problem().text.empty()) return std::nullopt;
  return places;
}

std::string Written(const std::string& bytes, const std::vector<AgsPlace>& places) {
  std::string written;
  exchange::WriteAgs(bytes, "Road \"1\"", places, [&](std::string_view piece) { written += piece; });
  return written;
}

}  // namespace

void Run(const Input& input) {
  const auto places = PlacesOf(input.File());
  if (!places) return;
  const std::string columns = Written(input.File(), {});
  Require(Written(columns, {}) == columns, "without stations only columns are added, and once");
  const std::string filled = Written(input.File(), *places);
  Require(Written(filled, *places) == filled, "what is filled in stays");
  const auto again = PlacesOf(filled);
  Require(again && again->size() == places->size(), "the rows are still there");
}

}  // namespace velmora::fuzz
