// Roads of CSV files with well-known text.
#include "fuzz/support/imported.h"
#include "fuzz/support/input.h"
#include "velmora/exchange/wkt_csv.h"

namespace velmora::fuzz {

void Run(const Input& input) {
  std::string problem;
  std::vector<exchange::ImportedRoad> roads = exchange::ReadWktCsv(input.File(), &problem);
  Require(problem.empty() || roads.empty(), "a file without the column has no roads");
  RequireImportable(std::move(roads));
}

}  // namespace velmora::fuzz
