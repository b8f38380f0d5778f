// What one would otherwise use for the stations and offsets of many points.
#ifndef VELMORA_BENCH_LOCATOR_PEERS_H_
#define VELMORA_BENCH_LOCATOR_PEERS_H_

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "bench/locator/roads.h"
#include "velmora/alignment/alignment_point.h"

namespace velmora {

class Peer {
 public:
  virtual ~Peer() = default;
  virtual std::string Name() const = 0;
  // The nearest segment to each point, and the point's station and offset on it.
  virtual void Locate(const Places& places, size_t count, double* station, double* offset) const = 0;
};

// A packed R-tree of Boost.Geometry with `most` elements a node (4, 8 or 16): of the segments themselves
// or, with arcs, of their boxes, taken nearest first until a box is farther than what was found. `sorted`
// takes the points along a Z-curve, by a radix sort, and puts the answers back. With several roads one after
// the other, `starts` are the positions at which the second and later ones begin.
std::unique_ptr<Peer> MakeBoostPeer(const std::vector<kovltype>& road, bool arcs, int most, bool sorted,
                                    const std::vector<size_t>& starts = {});

// GEOSPreparedNearestPoints on the prepared line: the nearest point and from it the distance, no station.
std::unique_ptr<Peer> MakeGeosPeer(const std::vector<kovltype>& road);

}  // namespace velmora

#endif  // VELMORA_BENCH_LOCATOR_PEERS_H_
