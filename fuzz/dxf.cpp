// DXF drawings: reading them, and writing what was read.
#include "velmora/exchange/dxf.h"

#include <algorithm>
#include <cmath>

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"

namespace velmora::fuzz {
namespace {

using exchange::ImportedRoad;

std::vector<ImportedRoad> Read(std::string_view bytes, const exchange::ImportOptions& options,
                               Finding* problem) {
  const exchange::Source source = [&](std::span<char> buffer) {
    const size_t count = std::min(bytes.size(), buffer.size());
    std::copy_n(bytes.begin(), count, buffer.begin());
    bytes.remove_prefix(count);
    return static_cast<std::int64_t>(count);
  };
  return exchange::ReadDxf(source, options, problem);
}

bool IsFinite(const kovltype& p) {
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.bulge) && std::isfinite(p.sek);
}

// A zero has no sign in the file.
bool IsEqual(const kovltype& a, const kovltype& b) {
  return a.x == b.x && a.y == b.y && a.bulge == b.bulge && a.sek == b.sek;
}

}  // namespace

// The argument is a layer.
void Run(const Input& input) {
  exchange::ImportOptions options;
  options.layer = input.Bytes(0);
  Finding problem;
  const std::vector<ImportedRoad> roads = Read(input.File(), options, &problem);
  Require(problem.text.empty() || roads.empty(), "a refused file has no roads");
  for (const ImportedRoad& road : roads) {
    Require(road.refused == road.road.plan.empty(), "a road that is refused has no points");
    Require(!road.refused || !road.findings.empty(), "and a reason");
    if (road.refused || !std::all_of(road.road.plan.begin(), road.road.plan.end(), IsFinite)) continue;
    exchange::ExportInput output;
    output.road = road.road;
    std::string bytes;
    if (!exchange::WriteDxf(output, [&](std::string_view piece) { bytes += piece; }).empty()) continue;
    const std::vector<ImportedRoad> again = Read(bytes, {}, &problem);
    Require(problem.text.empty() && again.size() == 1, "a road that was written is read");
    const std::vector<kovltype>& plan = again[0].road.plan;
    Require(std::equal(plan.begin(), plan.end(), road.road.plan.begin(), road.road.plan.end(), IsEqual),
            "its points come back");
    Require(again[0].road.name == road.road.name || road.road.name.empty(), "and its name");
  }
}

}  // namespace velmora::fuzz
