#include "velmora/locator/merged_roads.h"

#include <algorithm>
#include <utility>

#include "velmora/alignment/geometry.h"
#include "velmora/locator/bound_tree.h"
#include "velmora/locator/plan_snapshot.h"
#include "velmora/locator/segment_bounds.h"

namespace velmora {
namespace {

// The square of its distance from anything overflows: no chord that begins there is nearest, and the inverse
// of the squared length of one that ends there is 0, as a degenerate one's.
constexpr double kBeyondAll = 1e160;

// The position of a cell along a Hilbert curve through 65536 by 65536.
std::uint32_t AlongHilbert(std::uint32_t column, std::uint32_t row) {
  std::uint32_t position = 0;
  for (std::uint32_t half = 1u << 15; half > 0; half /= 2) {
    const bool right = (column & half) != 0;
    const bool upper = (row & half) != 0;
    position = position << 2 | (right ? (upper ? 2u : 3u) : (upper ? 1u : 0u));
    if (upper) continue;  // the lower quarters are turned
    if (right) {
      column = ~column;
      row = ~row;
    }
    std::swap(column, row);
  }
  return position;
}

// The numbers of the roads along a Hilbert curve through the middles of their boxes.
std::vector<std::uint32_t> AlongCurve(std::span<const RoadPoints> roads, const std::vector<bool>& takes) {
  struct Item {
    PlanePoint middle;
    std::uint32_t key;
    std::uint32_t road;
  };
  std::vector<Item> items;
  BoundingBox extent = kEmptyBounds;
  for (size_t i = 0; i < roads.size(); ++i) {
    if (!takes[i] || roads[i].size() < 2) continue;
    BoundingBox box = kEmptyBounds;
    for (const kovltype& point : roads[i]) box.Include(InPlane(point));
    items.push_back({box.Middle(), 0, static_cast<std::uint32_t>(i)});
    extent.Include(box.Middle());
  }
  constexpr double kSteps = 65535;
  const double size = std::max({extent.high.h - extent.low.h, extent.high.v - extent.low.v, 1.0});
  const auto step = [&](double value, double low) {  // 0 where it is not a number
    return static_cast<std::uint32_t>(std::min(std::max(0.0, (value - low) / size * kSteps), kSteps));
  };
  for (Item& item : items)
    item.key = AlongHilbert(step(item.middle.h, extent.low.h), step(item.middle.v, extent.low.v));
  std::sort(items.begin(), items.end(),
            [](const Item& a, const Item& b) { return a.key != b.key ? a.key < b.key : a.road < b.road; });
  std::vector<std::uint32_t> order;
  for (const Item& item : items) order.push_back(item.road);
  return order;
}

}  // namespace

MergedRoads MergeRoads(std::span<const RoadPoints> roads, const std::vector<bool>& takes) {
  MergedRoads merged;
  merged.ranges.resize(roads.size());
  const std::vector<std::uint32_t> order = AlongCurve(roads, takes);
  size_t count = 0;
  for (const std::uint32_t road : order) count += roads[road].size() + BoundTree::kFan;
  merged.points.reserve(count);
  merged.marks.reserve(count);
  for (const std::uint32_t road : order) {
    const RoadPoints points = roads[road];
    merged.ranges[road] = {merged.points.size(), merged.points.size() + points.size() - 1};
    merged.points.insert(merged.points.end(), points.begin(), points.end());
    merged.marks.insert(merged.marks.end(), points.size() - 1, RoadMark(road, IsDescending(points)));
    merged.points.back().bulge = 0;  // does nothing, and must not shape what follows
    merged.points.push_back({kBeyondAll, kBeyondAll, 0, 0});
    while (merged.points.size() % BoundTree::kFan != 0) merged.points.push_back(merged.points.back());
    merged.marks.resize(merged.points.size(), PlanSnapshot::kBetweenRoads);
  }
  return merged;
}

}  // namespace velmora
