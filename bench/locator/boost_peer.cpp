#include <algorithm>
#include <array>
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <cmath>
#include <cstdint>
#include <limits>

#include "bench/locator/peers.h"
#include "velmora/alignment/geometry.h"

namespace velmora {
namespace {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;
using Point = bg::model::point<double, 2, bg::cs::cartesian>;
using Segment = bg::model::segment<Point>;
using Rectangle = bg::model::box<Point>;

Point At(const kovltype& p) { return {p.y, p.x}; }

// Positions of the points along a Z-curve over their extent.
std::vector<std::uint32_t> AlongCurve(const Places& places, size_t count) {
  const auto [low_x, high_x] =
      std::minmax_element(places.x.begin(), places.x.begin() + static_cast<std::ptrdiff_t>(count));
  const auto [low_y, high_y] =
      std::minmax_element(places.y.begin(), places.y.begin() + static_cast<std::ptrdiff_t>(count));
  const double scale = 65535 / std::max({*high_x - *low_x, *high_y - *low_y, 1e-9});
  const auto spread = [](std::uint32_t v) {
    v = (v | v << 8) & 0x00ff00ff;
    v = (v | v << 4) & 0x0f0f0f0f;
    v = (v | v << 2) & 0x33333333;
    return (v | v << 1) & 0x55555555;
  };
  struct Item {
    std::uint32_t key;
    std::uint32_t index;
  };
  std::vector<Item> items(count);
  std::vector<Item> other(count);
  for (size_t i = 0; i < count; ++i)
    items[i] = {spread(static_cast<std::uint32_t>((places.x[i] - *low_x) * scale)) << 1 |
                    spread(static_cast<std::uint32_t>((places.y[i] - *low_y) * scale)),
                static_cast<std::uint32_t>(i)};
  for (unsigned shift = 10; shift < 32; shift += 11) {  // the last 10 bits do not matter
    std::array<std::uint32_t, 2049> starts{};
    for (const Item& item : items) ++starts[(item.key >> shift & 2047) + 1];
    for (size_t i = 1; i < starts.size(); ++i) starts[i] += starts[i - 1];
    for (const Item& item : items) other[starts[item.key >> shift & 2047]++] = item;
    items.swap(other);
  }
  std::vector<std::uint32_t> order(count);
  for (size_t i = 0; i < count; ++i) order[i] = items[i].index;
  return order;
}

template <class Indexed, int kMost>
class BoostPeer : public Peer {
 public:
  BoostPeer(const std::vector<kovltype>& road, bool sorted, const std::vector<size_t>& starts)
      : road_(road), sorted_(sorted) {
    std::vector<Value> values;
    values.reserve(road.size());
    auto start = starts.begin();
    for (std::uint32_t i = 0; i + 1 < road.size(); ++i) {
      if (start != starts.end() && *start == i + 1) {
        ++start;
        if constexpr (!std::is_same_v<Indexed, Segment>) frames_.emplace_back();
      } else {
        values.push_back({Bound(i), i});
      }
    }
    tree_ = Tree(values);
  }
  std::string Name() const override {
    return "Boost R-tree, " + std::to_string(kMost) + " a node" + (sorted_ ? ", sorted" : "");
  }
  void Locate(const Places& places, size_t count, double* station, double* offset) const override {
    if (!sorted_) {
      for (size_t i = 0; i < count; ++i) LocateOne({places.y[i], places.x[i]}, &station[i], &offset[i]);
      return;
    }
    for (const std::uint32_t i : AlongCurve(places, count))
      LocateOne({places.y[i], places.x[i]}, &station[i], &offset[i]);
  }

 private:
  using Value = std::pair<Indexed, std::uint32_t>;
  using Tree = bgi::rtree<Value, bgi::rstar<kMost>>;

  Indexed Bound(std::uint32_t i) {
    if constexpr (std::is_same_v<Indexed, Segment>) {
      return {At(road_[i]), At(road_[i + 1])};
    } else {
      frames_.push_back(FrameOfArc(InPlane(road_[i]), road_[i].bulge, InPlane(road_[i + 1])));
      const double sagitta =
          std::fabs(road_[i].bulge) * Distance(InPlane(road_[i]), InPlane(road_[i + 1])) / 2;
      const auto [low_x, high_x] = std::minmax(road_[i].x, road_[i + 1].x);
      const auto [low_y, high_y] = std::minmax(road_[i].y, road_[i + 1].y);
      return {{low_y - sagitta, low_x - sagitta}, {high_y + sagitta, high_x + sagitta}};
    }
  }

  Foot FootOn(std::uint32_t i, PlanePoint p) const {
    if constexpr (!std::is_same_v<Indexed, Segment>)
      if (!IsStraight(road_[i].bulge)) return FootOnArc(frames_[i], p);
    return FootOnStraight(InPlane(road_[i]), InPlane(road_[i + 1]), p);
  }

  void LocateOne(PlanePoint p, double* station, double* offset) const {
    if constexpr (std::is_same_v<Indexed, Segment>) {
      Value nearest;
      tree_.query(bgi::nearest(Point(p.h, p.v), 1), &nearest);
      const Foot foot = FootOn(nearest.second, p);
      *station = road_[nearest.second].sek + foot.along;
      *offset = foot.offset;
    } else {
      double best = std::numeric_limits<double>::infinity();
      const Point point(p.h, p.v);
      for (auto it = tree_.qbegin(bgi::nearest(point, 16)); it != tree_.qend(); ++it) {
        if (bg::comparable_distance(point, it->first) > best * best) break;
        const Foot foot = FootOn(it->second, p);
        if (foot.place != FootPlace::kInside || !(std::fabs(foot.offset) < best)) continue;
        best = std::fabs(foot.offset);
        *station = road_[it->second].sek + foot.along;
        *offset = foot.offset;
      }
    }
  }

  const std::vector<kovltype>& road_;
  bool sorted_;
  std::vector<ArcFrame> frames_;
  Tree tree_;
};

template <class Indexed>
std::unique_ptr<Peer> Make(const std::vector<kovltype>& road, int most, bool sorted,
                           const std::vector<size_t>& starts) {
  if (most == 4) return std::make_unique<BoostPeer<Indexed, 4>>(road, sorted, starts);
  if (most == 8) return std::make_unique<BoostPeer<Indexed, 8>>(road, sorted, starts);
  return std::make_unique<BoostPeer<Indexed, 16>>(road, sorted, starts);
}

}  // namespace

std::unique_ptr<Peer> MakeBoostPeer(const std::vector<kovltype>& road, bool arcs, int most, bool sorted,
                                    const std::vector<size_t>& starts) {
  return arcs ? Make<Rectangle>(road, most, sorted, starts) : Make<Segment>(road, most, sorted, starts);
}

}  // namespace velmora
