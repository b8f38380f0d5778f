// A tree over bounds in an order in which neighbours lie near each other, as the segments of a road do: each
// node bounds kFan consecutive ones of the level below. Built in one pass.
#ifndef VELMORA_LOCATOR_BOUND_TREE_H_
#define VELMORA_LOCATOR_BOUND_TREE_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "velmora/locator/segment_bounds.h"
#include "velmora/platform/large_vector.h"

namespace velmora {

class BoundTree {
 public:
  static constexpr size_t kFan = 8;

  struct Node {
    BoundingBox box;
    Tangents tangents;

    // Whether a foot of `p` may lie on one of the bounded segments.
    bool MayHoldFoot(PlanePoint p) const;
  };

  // The boxes of kFan consecutive nodes side by side; those after a level's last node are empty.
  struct Boxes {
    double low_h[kFan], low_v[kFan], high_h[kFan], high_v[kFan];

    BoundingBox Of(size_t i) const { return {{low_h[i], low_v[i]}, {high_h[i], high_v[i]}}; }
    void Set(size_t i, const BoundingBox& box);
  };

  // To be built: for `items` items, of which each kFan have a leaf, the last ones the last. Each is set once,
  // by any thread.
  void Begin(size_t items);
  void SetLeaf(size_t leaf, const FootBound& bound) { levels_[0].Set(leaf, bound); }
  void Finish(int threads);

  // From the lowest, 0, to the highest, which has at most kFan nodes. The children of node i are those of
  // GroupAt(level - 1, i).
  size_t Levels() const { return levels_.size(); }
  const Boxes& GroupAt(size_t level, size_t group) const { return levels_[level].boxes[group]; }
  static constexpr size_t kDeepest = 12;  // levels: more than 32-bit numbers of leaves need

  // Calls visit(leaf) for the leaves whose node and all nodes above pass keep(node, squared distance of its
  // box), the nearest child first. `keep` may become stricter as leaves are visited.
  template <class Keep, class Visit>
  void Search(PlanePoint p, Keep keep, Visit visit) const;

 private:
  struct Level {
    explicit Level(size_t nodes);
    void Set(size_t node, const FootBound& bound) {
      boxes[node / kFan].Set(node % kFan, bound.box);
      tangents[node] = bound.tangents;
    }
    // Of the nodes of a group.
    FootBound OfGroup(size_t group) const;

    LargeVector<Boxes> boxes;
    LargeVector<Tangents> tangents;  // of each node
  };
  struct Waiting {
    double squared;
    std::uint32_t level;
    std::uint32_t node;
  };

  std::vector<Level> levels_;
};

template <class Keep, class Visit>
void BoundTree::Search(PlanePoint p, Keep keep, Visit visit) const {
  std::array<Waiting, kDeepest * kFan> stack;  // NOLINT: filled as far as it is read
  size_t waiting = 0;
  const auto node_at = [this](size_t level, size_t node) {
    return Node{levels_[level].boxes[node / kFan].Of(node % kFan), levels_[level].tangents[node]};
  };
  // A group's nodes, farthest first, so that the nearest is visited next.
  const auto add = [&](size_t level, size_t group) {
    const size_t bottom = waiting;
    const size_t end = std::min((group + 1) * kFan, levels_[level].tangents.size());
    for (size_t i = group * kFan; i < end; ++i) {
      const Node node = node_at(level, i);
      const double squared = node.box.SquaredDistance(p);
      if (!keep(node, squared)) continue;
      size_t at = waiting++;
      for (; at > bottom && stack[at - 1].squared < squared; --at) stack[at] = stack[at - 1];
      stack[at] = {squared, static_cast<std::uint32_t>(level), static_cast<std::uint32_t>(i)};
    }
  };
  if (!levels_.empty()) add(levels_.size() - 1, 0);
  while (waiting > 0) {
    const Waiting next = stack[--waiting];
    if (!keep(node_at(next.level, next.node), next.squared)) continue;
    if (next.level == 0)
      visit(size_t{next.node});
    else
      add(next.level - 1, next.node);
  }
}

}  // namespace velmora

#endif  // VELMORA_LOCATOR_BOUND_TREE_H_
