#include "velmora/locator/merged_roads.h"

#include <algorithm>
#include <utility>

#include "velmora/alignment/geometry.h"
#include "velmora/locator/bound_tree.h"
#include "velmora/locator/segment_bounds.h"
#include "velmora/platform/in_threads.h"

namespace velmora {
namespace {

constexpr size_t kRoadsAtOnce = 256;

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

struct Item {
  PlanePoint middle;
  std::uint32_t key;
  std::uint32_t road;
  bool has_arcs;
};

// The roads along a Hilbert curve through their middle points.
std::vector<Item> AlongCurve(std::span<const RoadPoints> roads, const std::vector<bool>& takes, int threads) {
  std::vector<Item> items;
  for (size_t i = 0; i < roads.size(); ++i)
    if (takes[i] && roads[i].size() >= 2) items.push_back({{}, 0, static_cast<std::uint32_t>(i), false});
  InRuns(items.size(), kRoadsAtOnce, threads, [&](size_t begin, size_t end) {
    for (Item& item : std::span(items).subspan(begin, end - begin)) {
      item.middle = InPlane(roads[item.road][roads[item.road].size() / 2]);
      item.has_arcs = HasArcs(roads[item.road]);
    }
  });
  BoundingBox extent = kEmptyBounds;
  for (const Item& item : items) extent.Include(item.middle);
  constexpr double kSteps = 65535;
  const double size = std::max({extent.high.h - extent.low.h, extent.high.v - extent.low.v, 1.0});
  const auto step = [&](double value, double low) {  // 0 where it is not a number
    return static_cast<std::uint32_t>(std::min(std::max(0.0, (value - low) / size * kSteps), kSteps));
  };
  for (Item& item : items)
    item.key = AlongHilbert(step(item.middle.h, extent.low.h), step(item.middle.v, extent.low.v));
  std::sort(items.begin(), items.end(),
            [](const Item& a, const Item& b) { return a.key != b.key ? a.key < b.key : a.road < b.road; });
  return items;
}

}  // namespace

bool HasArcs(RoadPoints points) {
  // The last bulge does nothing.
  return !points.empty() && std::any_of(points.begin(), points.end() - 1,
                                        [](const kovltype& point) { return !IsStraight(point.bulge); });
}

MergedRoads MergeRoads(std::span<const RoadPoints> roads, const std::vector<bool>& takes, int threads) {
  MergedRoads merged;
  merged.ranges.resize(roads.size());
  for (const Item& item : AlongCurve(roads, takes, threads)) {
    const RoadPoints points = roads[item.road];
    const size_t begin = merged.vertices;
    merged.ranges[item.road] = {begin, begin + points.size() - 1};
    merged.pieces.push_back({points, begin, RoadMark(item.road, IsDescending(points)), item.has_arcs});
    // At least one vertex between two roads, and each road begins with a leaf of the tree.
    merged.vertices = (begin + points.size() + BoundTree::kFan) / BoundTree::kFan * BoundTree::kFan;
  }
  return merged;
}

}  // namespace velmora
