#include "velmora/locator/network_search.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <utility>

namespace velmora {
namespace {

constexpr double kChordRoom = 1e-4;  // m, for rounding in a chord's distance

}  // namespace

bool RoadAnswer::IsBefore(const RoadAnswer& other) const {
  const double distance = std::fabs(offset);
  const double others = std::fabs(other.offset);
  return distance < others || (distance == others && road < other.road);
}

// The searches of the roads that a search by trees has met, each begun with the road's ends: a vertex that is
// then nearer than both remains so.
class NetworkSearch::Met {
 public:
  Met(const NetworkSearch& network, PlanePoint p) : network_(network), p_(p) {}

  PointSearch& Of(std::uint32_t mark) {
    if (!roads_.empty() && roads_[last_].first == mark) return roads_[last_].second;
    const auto [place, added] = places_.try_emplace(mark, roads_.size());
    last_ = place->second;
    if (added) {
      PointSearch& search = roads_.emplace_back(mark, network_.SearchOf(mark)).second;
      const MergedRoads::VertexRange& range = network_.ranges_[RoadOfMark(mark)];
      for (const size_t end : {range.first, range.last})
        search.ConsiderVertex(end, Distance(p_, network_.Plan().At(end)));
    }
    return roads_[last_].second;
  }
  const std::vector<std::pair<std::uint32_t, PointSearch>>& Roads() const { return roads_; }

 private:
  const NetworkSearch& network_;
  PlanePoint p_;
  std::vector<std::pair<std::uint32_t, PointSearch>> roads_;
  std::unordered_map<std::uint32_t, size_t> places_;
  size_t last_ = 0;
};

NetworkSearch::NetworkSearch(const MergedRoads& merged, double no_station, int threads,
                             const BatchRoutines& routines)
    : PlanSearch(PlanSnapshot(merged, no_station, threads), routines),
      no_station_(no_station),
      ranges_(merged.ranges) {}

PointSearch NetworkSearch::SearchOf(std::uint32_t mark) const {
  return {{IsDescendingMark(mark), no_station_}};
}

bool NetworkSearch::IsInterior(std::uint32_t mark, size_t vertex) const {
  const MergedRoads::VertexRange& range = ranges_[RoadOfMark(mark)];
  return vertex > range.first && vertex < range.last;
}

std::optional<RoadAnswer> NetworkSearch::Conclude(std::uint32_t mark, const PointSearch& search,
                                                  PlanePoint p) const {
  const auto road = static_cast<int>(RoadOfMark(mark));
  const size_t at = search.vertex;
  if (IsInterior(mark, at) && search.feet.best > search.vertex_distance)
    return RoadAnswer{road, Plan().Stations()[at], Plan().OffsetFrom(at, p, search.vertex_distance)};
  if (search.feet.Result() < 0) return std::nullopt;
  return RoadAnswer{road, search.feet.station, search.feet.offset};
}

// A cell's candidates are in the order of the plan, so that each road's follow each other.
std::optional<RoadAnswer> NetworkSearch::NearestInCell(PackedCell cell, PlanePoint p) const {
  std::optional<RoadAnswer> nearest;
  std::uint32_t mark = PlanSnapshot::kBetweenRoads;
  PointSearch search = SearchOf(mark);
  const auto conclude = [&] {
    if (mark == PlanSnapshot::kBetweenRoads) return;
    const std::optional<RoadAnswer> answer = Conclude(mark, search, p);
    if (answer && (!nearest || answer->IsBefore(*nearest))) nearest = answer;
  };
  SegmentRun single{};
  for (const SegmentRun& run : Grid().Runs(cell, &single))
    for (size_t i = run.first; i < size_t{run.first} + run.count; ++i) {
      if (Plan().Roads()[i] != mark) {
        conclude();
        mark = Plan().Roads()[i];
        search = SearchOf(mark);
      }
      if (mark == PlanSnapshot::kBetweenRoads) continue;
      Plan().ConsiderSegment(i, p, &search);
      for (const size_t end : {i, i + 1}) search.ConsiderVertex(end, Distance(p, Plan().At(end)));
    }
  conclude();
  return nearest;
}

template <class Consider>
void NetworkSearch::ForLeaf(size_t leaf, PlanePoint p, const double& metres, Consider consider) const {
  const size_t begin = leaf * BoundTree::kFan;
  const size_t end = std::min(begin + BoundTree::kFan, Plan().Segments());
  std::array<double, BoundTree::kFan + kChordsAtOnce> away;  // NOLINT: written before it is read
  Routines().distances(Plan(), p, begin, end - begin, away.data());
  for (size_t i = begin; i < end; ++i) {
    const bool beyond = away[i - begin] - Plan().ChordSlack(i) > metres * (1 + 1e-9) + kChordRoom;
    if (!beyond && !Plan().IsBetweenRoads(i)) consider(i);
  }
}

double NetworkSearch::NearestFoot(PlanePoint p) const {
  PointSearch search = SearchOf(0);
  Plan().Tree().Search(
      p,
      [&](const BoundTree::Node& node, double squared) {
        return squared <= Beyond(search.feet.best) && node.MayHoldFoot(p);
      },
      [&](size_t leaf) {
        ForLeaf(leaf, p, search.feet.best, [&](size_t i) { Plan().ConsiderSegment(i, p, &search); });
      });
  return search.feet.best <= kFoundBelow ? search.feet.best : std::numeric_limits<double>::infinity();
}

void NetworkSearch::SearchTrees(PlanePoint p, double metres, bool nearest,
                                std::vector<RoadAnswer>* answers) const {
  if (!std::isfinite(p.h) || !std::isfinite(p.v) || std::fabs(p.h) > kFarthestPoint ||
      std::fabs(p.v) > kFarthestPoint)
    return;
  // A road whose distance is at most the limit is searched completely as far as that. With `nearest` a road
  // met on the way lowers it to what its own distance is at most.
  double limit = Beyond(metres);
  double least = metres;
  const auto lower_limit = [&](std::uint32_t mark, const PointSearch& search) {
    if (!nearest) return;
    const bool vertex_answers = IsInterior(mark, search.vertex);
    const double most =
        vertex_answers ? std::min(search.feet.best, search.vertex_distance) : search.feet.best;
    if (!(most < least && most <= kFoundBelow)) return;  // a road whose best foot is farther does not answer
    least = most;
    limit = Beyond(least);
  };
  Met met(*this, p);
  Plan().Tree().Search(
      p, [&](const BoundTree::Node&, double squared) { return squared <= limit; },
      [&](size_t leaf) {
        ForLeaf(leaf, p, least, [&](size_t i) {
          const std::uint32_t mark = Plan().Roads()[i];
          PointSearch& search = met.Of(mark);
          Plan().ConsiderSegment(i, p, &search);
          search.ConsiderVertex(i, Distance(p, Plan().At(i)));
          lower_limit(mark, search);
        });
      });
  Plan().AxisTree().Search(
      p, [&](const BoundTree::Node& node, double squared) { return squared <= limit && node.MayHoldFoot(p); },
      [&](size_t leaf) {
        const size_t begin = leaf * BoundTree::kFan;
        const size_t end = std::min(begin + BoundTree::kFan, Plan().AxisQuirks().size());
        for (size_t i = begin; i < end; ++i) {
          const std::uint32_t segment = Plan().AxisQuirks()[i].segment;
          const std::uint32_t mark = Plan().Roads()[segment];
          PointSearch& search = met.Of(mark);
          Plan().ConsiderSegment(segment, p, &search);
          lower_limit(mark, search);
        }
      });
  for (const auto& [mark, search] : met.Roads()) {
    const std::optional<RoadAnswer> answer = Conclude(mark, search, p);
    if (answer && std::fabs(answer->offset) <= metres) answers->push_back(*answer);
  }
}

void NetworkSearch::AddWithin(PlanePoint p, double metres, std::vector<RoadAnswer>* answers) const {
  SearchTrees(p, metres, false, answers);
}

StationOffset NetworkSearch::FindOne(PlanePoint p) const {
  const PackedCell cell = CellAt(p);
  if (Reach(cell) > 0) {
    const std::optional<RoadAnswer> nearest = NearestInCell(cell, p);
    if (nearest && std::fabs(nearest->offset) < Reach(cell))
      return {nearest->road, nearest->station, nearest->offset};
  }
  std::vector<RoadAnswer> answers;
  SearchTrees(p, NearestFoot(p), true, &answers);
  if (answers.empty()) return {-1, no_station_, 0};
  const RoadAnswer& nearest = *std::min_element(
      answers.begin(), answers.end(), [](const RoadAnswer& a, const RoadAnswer& b) { return a.IsBefore(b); });
  return {nearest.road, nearest.station, nearest.offset};
}

}  // namespace velmora
