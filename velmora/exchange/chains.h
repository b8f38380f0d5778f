// Single lines and arcs that together make a road.
#ifndef VELMORA_EXCHANGE_CHAINS_H_
#define VELMORA_EXCHANGE_CHAINS_H_

#include <cstddef>
#include <vector>

#include "velmora/alignment/geometry.h"

namespace velmora::exchange {

inline constexpr double kJoinDistance = 0.001;  // m between ends that join

// A line, or an arc with its bulge from `from` to `to`.
struct Piece {
  PlanePoint from;
  PlanePoint to;
  double bulge = 0;
};

// Pieces in the order of travel.
struct Chain {
  struct Link {
    size_t piece = 0;
    bool reversed = false;
  };
  std::vector<Link> links;
  bool closed = false;
};

// Joins each end to the one other end within 1 mm; where three or more meet, none join. A chain runs as its
// first straight piece does, else as its first one. Chains are in the order of their first pieces. Takes
// n log n time wherever the ends lie.
std::vector<Chain> JoinPieces(const std::vector<Piece>& pieces);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_CHAINS_H_
