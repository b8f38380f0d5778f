// Geometries of GeoPackage: reading lines and points, and writing what was read.
#include <algorithm>
#include <cmath>

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/exchange/wkb.h"

namespace velmora::fuzz {
namespace {

constexpr double kLargest = 1e9;  // m; arcs between larger numbers are not kept

bool IsUsual(const kovltype& p) {
  return std::fabs(p.x) < kLargest && std::fabs(p.y) < kLargest && std::fabs(p.sek) < kLargest;
}

}  // namespace

void Run(const Input& input) {
  using namespace exchange;
  const BlobLine line = ReadLineBlob(input.File());
  Require(line.error.empty() == (line.points.size() >= 2), "there are points, or the reason why not");
  if (const auto point = ReadPointBlob(input.File()))
    Require(std::isfinite(point->easting) && std::isfinite(point->northing), "a point has coordinates");
  if (!line.error.empty() || !std::all_of(line.points.begin(), line.points.end(), IsUsual)) return;
  std::vector<kovltype> chords = line.points;
  for (kovltype& point : chords) point.bulge = 0;
  const BlobLine again = ReadLineBlob(LineStringBlob(chords, 0));
  Require(again.error.empty() && SamePoints(again.points, chords), "the points of a line come back");
  (void)ReadLineBlob(CompoundCurveBlob(line.points, 0));
}

}  // namespace velmora::fuzz
