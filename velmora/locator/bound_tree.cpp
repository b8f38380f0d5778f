#include "velmora/locator/bound_tree.h"

#include <cmath>
#include <utility>

#include "velmora/platform/in_threads.h"

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

BoundTree::Level::Level(size_t nodes) : boxes((nodes + kFan - 1) / kFan), tangents(nodes) {
  for (size_t i = nodes; i < boxes.size() * kFan; ++i) boxes.back().Set(i % kFan, kEmptyBounds);
}

FootBound BoundTree::Level::OfGroup(size_t group) const {
  FootBound all;
  for (size_t i = group * kFan; i < std::min((group + 1) * kFan, tangents.size()); ++i)
    all.Include({boxes[group].Of(i % kFan), tangents[i]});
  return all;
}

void BoundTree::Begin(size_t items) {
  levels_.clear();
  if (items > 0) levels_.emplace_back((items + kFan - 1) / kFan);
}

void BoundTree::Finish(int threads) {
  constexpr size_t kGroupsAtOnce = size_t{1} << 11;
  while (!levels_.empty() && levels_.back().boxes.size() > 1) {
    const size_t groups = levels_.back().boxes.size();
    Level above(groups);
    InRuns(groups, kGroupsAtOnce, threads, [&](size_t begin, size_t end) {
      for (size_t i = begin; i < end; ++i) above.Set(i, levels_.back().OfGroup(i));
    });
    levels_.push_back(std::move(above));
  }
}

}  // namespace velmora
