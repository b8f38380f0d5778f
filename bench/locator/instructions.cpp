// Passes of a batch over ground that is known, for an emulator that counts instructions
// (scripts/bench-arm64).
//
//   locator_instructions road|network baseline|wide PASSES     20,000 points a pass, after a first one
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "bench/locator/roads.h"
#include "velmora/alignment/vaglinje.h"
#include "velmora/locator/network_search.h"
#include "velmora/platform/vector_lanes.h"

namespace velmora {
namespace {

int Main(int count, char** words) {
  if (count != 4) {
    std::fprintf(stderr,
                 "locator_instructions: give road or network, baseline or wide, and a number of passes\n");
    return 2;
  }
  const bool wide = std::string(words[2]) == "wide";
  if (wide && !HasWideLanes()) return 1;
  const BatchRoutines routines = wide ? WideRoutines() : BaselineRoutines();
  constexpr size_t kPoints = 20000;
  Places places;
  std::unique_ptr<PlanSearch> search;
  if (std::string(words[1]) == "network") {
    const std::vector<std::vector<kovltype>> roads = MakeRoads(50, 200, 15000, false);
    const std::vector<RoadPoints> spans(roads.begin(), roads.end());
    places = MakePlaces(roads, kPoints);
    search = std::make_unique<NetworkSearch>(MergeRoads(spans, std::vector<bool>(roads.size(), true)),
                                             CVaglinje::Seknoll, 1, routines);
  } else {
    const std::vector<kovltype> road = MakeRoad(10000, false);
    places = MakePlaces(road, kPoints, Order::kAlong);
    search = std::make_unique<PlanSearch>(PlanSnapshot(road, CVaglinje::Seknoll), routines);
  }
  std::vector<double> station(kPoints), offset(kPoints);
  std::vector<int> result(kPoints);
  for (int pass = 0; pass <= std::atoi(words[3]); ++pass)
    search->Find(places.x.data(), places.y.data(), kPoints, station.data(), offset.data(), result.data());
  return 0;
}

}  // namespace
}  // namespace velmora

int main(int count, char** words) { return velmora::Main(count, words); }
