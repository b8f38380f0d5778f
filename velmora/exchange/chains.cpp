#include "velmora/exchange/chains.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace velmora::exchange {
namespace {

constexpr size_t kNoEnd = std::numeric_limits<size_t>::max();
constexpr size_t kSeveral = kNoEnd - 1;
constexpr size_t kMostSeen = 24;  // of three neighbouring cells; with more, three ends meet in one

// The ends of piece i are 2i and 2i + 1.
struct CellEnd {
  std::int64_t column;
  std::int64_t row;
  size_t end;

  bool operator<(const CellEnd& other) const {
    if (column != other.column) return column < other.column;
    return row != other.row ? row < other.row : end < other.end;
  }
};

class Ends {
 public:
  explicit Ends(const std::vector<Piece>& pieces) : pieces_(pieces) {
    cells_.reserve(2 * pieces.size());
    for (size_t end = 0; end < 2 * pieces.size(); ++end)
      cells_.push_back({Cell(At(end).h), Cell(At(end).v), end});
    std::sort(cells_.begin(), cells_.end());
  }

  // The one other end within the distance; kNoEnd or kSeveral.
  size_t OtherAt(size_t end) const {
    const PlanePoint at = At(end);
    size_t found = kNoEnd;
    for (std::int64_t column = Cell(at.h) - 1; column <= Cell(at.h) + 1; ++column) {
      auto it = std::lower_bound(cells_.begin(), cells_.end(), CellEnd{column, Cell(at.v) - 1, 0});
      for (size_t seen = 0; it != cells_.end() && it->column == column && it->row <= Cell(at.v) + 1; ++it) {
        if (++seen > kMostSeen) return kSeveral;
        if (it->end == end || Distance(at, At(it->end)) > kJoinDistance) continue;
        if (found != kNoEnd) return kSeveral;
        found = it->end;
      }
    }
    return found;
  }

 private:
  PlanePoint At(size_t end) const { return end % 2 == 0 ? pieces_[end / 2].from : pieces_[end / 2].to; }
  // Of the width of the distance, so that only neighbouring cells need to be searched.
  static std::int64_t Cell(double coordinate) {
    constexpr double kFarthest = 1e15;
    return static_cast<std::int64_t>(
        std::floor(std::clamp(coordinate, -kFarthest, kFarthest) / kJoinDistance));
  }

  const std::vector<Piece>& pieces_;
  std::vector<CellEnd> cells_;
};

// For each end the one that it joins, kNoEnd without.
std::vector<size_t> Joints(const std::vector<Piece>& pieces) {
  const Ends ends(pieces);
  std::vector<size_t> joints(2 * pieces.size());
  for (size_t end = 0; end < joints.size(); ++end) joints[end] = ends.OtherAt(end);
  for (size_t end = 0; end < joints.size(); ++end) {
    const size_t other = joints[end];
    if (other < joints.size() && joints[other] != end) joints[end] = kNoEnd;
  }
  for (size_t& joint : joints)
    if (joint == kSeveral) joint = kNoEnd;
  return joints;
}

constexpr size_t OppositeEnd(size_t end) { return end ^ 1U; }

// The chain through piece `first`, in its direction.
Chain ChainThrough(size_t first, const std::vector<size_t>& joints, std::vector<bool>* taken) {
  Chain chain;
  // Backwards to where the chain begins; once round where it is closed.
  size_t start = 2 * first;
  while (joints[start] != kNoEnd) {
    start = OppositeEnd(joints[start]);
    if (start == 2 * first) break;
  }
  chain.closed = joints[start] != kNoEnd;
  for (size_t end = start; end != kNoEnd && !(*taken)[end / 2]; end = joints[OppositeEnd(end)]) {
    (*taken)[end / 2] = true;
    chain.links.push_back({end / 2, end % 2 == 1});
  }
  return chain;
}

void Reverse(Chain* chain) {
  std::reverse(chain->links.begin(), chain->links.end());
  for (Chain::Link& link : chain->links) link.reversed = !link.reversed;
}

}  // namespace

std::vector<Chain> JoinPieces(const std::vector<Piece>& pieces) {
  const std::vector<size_t> joints = Joints(pieces);
  std::vector<bool> taken(pieces.size());
  std::vector<Chain> chains;
  for (size_t first = 0; first < pieces.size(); ++first) {
    if (taken[first]) continue;
    Chain chain = ChainThrough(first, joints, &taken);
    const Chain::Link* straight = nullptr;
    for (const Chain::Link& link : chain.links)
      if (pieces[link.piece].bulge == 0 && (straight == nullptr || link.piece < straight->piece))
        straight = &link;
    if (straight != nullptr && straight->reversed) Reverse(&chain);
    chains.push_back(std::move(chain));
  }
  return chains;
}

}  // namespace velmora::exchange
