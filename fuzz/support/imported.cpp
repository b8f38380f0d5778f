#include "fuzz/support/imported.h"

#include <cmath>

#include "fuzz/support/input.h"
#include "velmora/exchange/alignment_text.h"
#include "velmora/exchange/arcs.h"
#include "velmora/exchange/import.h"
#include "velmora/exchange/landxml.h"
#include "velmora/exchange/wkt_csv.h"

namespace velmora::fuzz {
namespace {

bool IsFinite(const kovltype& p) {
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.bulge) && std::isfinite(p.sek);
}

}  // namespace

void RequireImportable(std::vector<exchange::ImportedRoad> roads) {
  constexpr double kFit = 1;  // m, so that few arcs are split
  constexpr size_t kMost = 4;
  if (roads.size() > kMost) roads.resize(kMost);
  for (exchange::ImportedRoad& imported : roads) {
    exchange::FinishImport(kFit, 0, &imported);
    for (const Finding& finding : imported.findings)
      Require(!finding.text.empty(), "a finding says something");
    if (imported.refused) {
      Require(!imported.findings.empty(), "a refusal has a reason");
      continue;
    }
    Require(imported.road.plan.size() >= 2, "a plan has two points");
    for (const std::vector<kovltype>& points : {imported.road.plan, imported.road.profile})
      for (const kovltype& point : points)
        Require(IsFinite(point) && std::fabs(point.bulge) <= 1,
                "numbers are finite, arcs at most half a circle");
    std::string text;
    const auto put = [&](std::string_view more) { text += more; };
    exchange::WriteAlignment(imported.road, put);
    const exchange::ExportInput input{imported.road, {0, 100}, {}, 0, 0.001, 0};
    exchange::WriteLandXml(input, put);
    exchange::WriteWktCsv(input, put);
    exchange::Chords(imported.road.plan, kFit);
  }
}

}  // namespace velmora::fuzz
