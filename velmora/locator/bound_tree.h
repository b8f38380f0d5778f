// A tree over bounds in an order in which neighbours lie near each other, as the segments of a road do: each
// node bounds kFan consecutive ones of the level below. Built in one pass.
#ifndef VELMORA_LOCATOR_BOUND_TREE_H_
#define VELMORA_LOCATOR_BOUND_TREE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "velmora/locator/segment_bounds.h"

namespace velmora {

class BoundTree {
 public:
  static constexpr size_t kFan = 8;

  struct Node {
    BoundingBox box;
    PlanePoint tangent;
    double spread;  // at least the sine of the tangents' spread; negative without tangents
    double size;    // diagonal of the box

    // Whether a foot of `p` may lie on one of the bounded segments.
    bool MayHoldFoot(PlanePoint p) const;
  };

  // The lowest level: one bound for each kFan items, the last for the rest.
  void Build(const std::vector<FootBound>& leaves);

  // Calls visit(leaf) for the leaves whose node and all nodes above pass keep(node, squared distance of its
  // box), the nearest child first. `keep` may become stricter as leaves are visited.
  template <class Keep, class Visit>
  void Search(PlanePoint p, Keep keep, Visit visit) const;

 private:
  struct Waiting {
    double squared;
    std::uint32_t level;
    std::uint32_t node;
  };
  static constexpr size_t kDeepest = 12;  // levels: more than 32-bit numbers of leaves need

  std::vector<std::vector<Node>> levels_;  // lowest first; the last has one node
};

template <class Keep, class Visit>
void BoundTree::Search(PlanePoint p, Keep keep, Visit visit) const {
  if (levels_.empty()) return;
  std::array<Waiting, kDeepest * kFan> stack;  // NOLINT: filled as far as it is read
  size_t waiting = 0;
  stack[waiting++] = {levels_.back()[0].box.SquaredDistance(p),
                      static_cast<std::uint32_t>(levels_.size() - 1), 0};
  while (waiting > 0) {
    const Waiting next = stack[--waiting];
    if (!keep(levels_[next.level][next.node], next.squared)) continue;
    if (next.level == 0) {
      visit(size_t{next.node});
      continue;
    }
    // The children, farthest first, so that the nearest is visited next.
    const std::vector<Node>& below = levels_[next.level - 1];
    const size_t begin = next.node * kFan;
    const size_t end = begin + kFan < below.size() ? begin + kFan : below.size();
    const size_t bottom = waiting;
    for (size_t child = begin; child < end; ++child) {
      const double squared = below[child].box.SquaredDistance(p);
      if (!keep(below[child], squared)) continue;
      size_t at = waiting++;
      for (; at > bottom && stack[at - 1].squared < squared; --at) stack[at] = stack[at - 1];
      stack[at] = {squared, next.level - 1, static_cast<std::uint32_t>(child)};
    }
  }
}

}  // namespace velmora

#endif  // VELMORA_LOCATOR_BOUND_TREE_H_
