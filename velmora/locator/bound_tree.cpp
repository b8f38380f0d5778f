#include "velmora/locator/bound_tree.h"

#include <algorithm>
#include <cmath>

namespace velmora {

bool BoundTree::Node::MayHoldFoot(PlanePoint p) const {
  if (spread < 0) return false;
  const PlanePoint middle = box.Middle();
  const double h = p.h - middle.h;
  const double v = p.v - middle.v;
  const double away = std::sqrt(h * h + v * v);
  // From any point of the box `p` lies within size/2 of (h, v). Beyond this limit none of the tangents is
  // perpendicular to the line to it.
  const double along = std::fabs(h * tangent.h + v * tangent.v);
  return along <= away * spread + size + 1e-6 + 1e-9 * away;
}

void BoundTree::Build(const std::vector<FootBound>& leaves) {
  levels_.clear();
  if (leaves.empty()) return;
  const std::vector<FootBound>* below = &leaves;
  std::vector<FootBound> bounds;
  for (;;) {
    std::vector<Node>& level = levels_.emplace_back();
    level.reserve(below->size());
    for (const FootBound& bound : *below)
      level.push_back(
          {bound.box, bound.tangents.middle, std::min(bound.tangents.spread, 1.0), bound.box.Diagonal()});
    if (below->size() == 1) return;
    std::vector<FootBound> above((below->size() + kFan - 1) / kFan);
    for (size_t i = 0; i < below->size(); ++i) above[i / kFan].Include((*below)[i]);
    bounds = std::move(above);
    below = &bounds;
  }
}

}  // namespace velmora
