// AGS4 lists: reading them, and filling in stations.
#include "velmora/exchange/ags.h"

#include <cmath>

#include "fuzz/support/input.h"

namespace velmora::fuzz {
namespace {

std::string Written(const std::string& bytes, const exchange::AgsList& list) {
  std::string written;
  exchange::WriteAgs(bytes, "Road \"1\"", list.rows, [&](std::string_view piece) { written += piece; });
  return written;
}

}  // namespace

void Run(const Input& input) {
  using exchange::AgsRow;
  exchange::AgsList list = exchange::ReadAgs(input.File());
  Require(list.problem.text.empty() || list.rows.empty(), "a refused file has no rows");
  if (!list.problem.text.empty()) return;
  for (const AgsRow& row : list.rows)
    Require(!row.problem.empty() || (std::isfinite(row.point.northing) && std::isfinite(row.point.easting)),
            "a row is a point, or there is a reason");
  const std::string columns = Written(input.File(), list);
  Require(Written(columns, list) == columns, "without stations only columns are added, and once");
  for (AgsRow& row : list.rows) row.point.station = row.point.offset = 12.5;
  const std::string filled = Written(input.File(), list);
  Require(Written(filled, list) == filled, "what is filled in stays");
  const exchange::AgsList again = exchange::ReadAgs(filled);
  Require(again.problem.text.empty() && again.rows.size() == list.rows.size(), "the rows are still there");
}

}  // namespace velmora::fuzz
