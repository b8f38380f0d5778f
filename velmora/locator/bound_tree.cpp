#include "velmora/locator/bound_tree.h"

#include <cmath>
#include <utility>

namespace velmora {

bool BoundTree::Node::MayHoldFoot(PlanePoint p) const {
  if (tangents.spread < 0) return false;
  const PlanePoint middle = box.Middle();
  const double h = p.h - middle.h;
  const double v = p.v - middle.v;
  const double away = std::sqrt(h * h + v * v);
  // From any point of the box `p` lies within half its diagonal of (h, v). Beyond this limit none of the
  // tangents, whose spread's sine is at most the spread, is perpendicular to the line to it.
  const double along = std::fabs(h * tangents.middle.h + v * tangents.middle.v);
  return along <= away * std::min(tangents.spread, 1.0) + box.Diagonal() + 1e-6 + 1e-9 * away;
}

void BoundTree::Boxes::Set(size_t i, const BoundingBox& box) {
  low_h[i] = box.low.h;
  low_v[i] = box.low.v;
  high_h[i] = box.high.h;
  high_v[i] = box.high.v;
}

void BoundTree::Build(std::vector<FootBound> leaves) {
  levels_.clear();
  for (std::vector<FootBound> nodes = std::move(leaves); !nodes.empty();) {
    const size_t groups = (nodes.size() + kFan - 1) / kFan;
    Level& level = levels_.emplace_back();
    level.boxes.resize(groups);
    level.tangents.reserve(nodes.size());
    std::vector<FootBound> above(groups > 1 ? groups : 0);
    for (size_t i = 0; i < groups * kFan; ++i) {
      level.boxes[i / kFan].Set(i % kFan, i < nodes.size() ? nodes[i].box : kEmptyBounds);
      if (i >= nodes.size()) continue;
      level.tangents.push_back(nodes[i].tangents);
      if (groups > 1) above[i / kFan].Include(nodes[i]);
    }
    nodes = std::move(above);
  }
}

}  // namespace velmora
