// Roads and points beside them, the same on every run.
#ifndef VELMORA_BENCH_LOCATOR_ROADS_H_
#define VELMORA_BENCH_LOCATOR_ROADS_H_

#include <cstddef>
#include <vector>

#include "velmora/alignment/alignment_point.h"

namespace velmora {

// Winding rows of road 500 m apart, joined at their ends, with a vertex every 10 to 50 m. With arcs every
// second segment is one, of up to 7 degrees.
std::vector<kovltype> MakeRoad(size_t vertices, bool arcs);

// Winding roads of `vertices` each that begin anywhere in a square of `side` m and head anywhere.
std::vector<std::vector<kovltype>> MakeRoads(size_t roads, size_t vertices, double side, bool arcs);

struct Places {
  std::vector<double> x;
  std::vector<double> y;
};

enum class Order { kAlong, kRandom };

// Points up to 30 m to either side, in the order of the road or in none.
Places MakePlaces(const std::vector<kovltype>& road, size_t count, Order order);

// Likewise beside roads, in no order.
Places MakePlaces(const std::vector<std::vector<kovltype>>& roads, size_t count);

}  // namespace velmora

#endif  // VELMORA_BENCH_LOCATOR_ROADS_H_
