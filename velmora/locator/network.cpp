#include "velmora/locator/network.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "velmora/alignment/road_files.h"
#include "velmora/alignment/vaglinje.h"
#include "velmora/locator/network_search.h"

namespace velmora {
namespace {

std::vector<RoadPoints> PointsOf(std::span<const std::vector<kovltype>> roads) {
  return {roads.begin(), roads.end()};
}

}  // namespace

struct Network::State {
  // A road with coordinates beyond all bounds, which would leave no ground to divide: searched by itself.
  struct Unbounded {
    int road;
    PlanSnapshot plan;
  };

  State(std::span<const RoadPoints> roads, int threads) : no_station(CVaglinje::Seknoll) {
    std::vector<bool> takes(roads.size(), true);
    search.emplace(MergeRoads(roads, takes, threads), no_station, threads);
    if (!search->Plan().HasUnbounded()) return;
    for (const std::uint32_t segment : search->Plan().Unbounded())
      takes[RoadOfMark(search->Plan().Roads()[segment])] = false;
    search.emplace(MergeRoads(roads, takes, threads), no_station, threads);
    for (size_t i = 0; i < roads.size(); ++i)
      if (!takes[i]) unbounded.push_back({static_cast<int>(i), PlanSnapshot(roads[i], no_station)});
  }

  std::optional<RoadAnswer> AnswerOf(const Unbounded& one, PlanePoint p) const {
    const StationOffset found = one.plan.Find(p);
    if (found.result < 0) return std::nullopt;
    return RoadAnswer{one.road, found.station, found.offset};
  }

  double no_station;
  std::optional<NetworkSearch> search;
  std::vector<Unbounded> unbounded;
};

Network::Network(std::span<const std::vector<kovltype>> roads, int threads)
    : state_(std::make_unique<State>(PointsOf(roads), threads)) {}

Network::Network(std::span<const CString> files, int threads, int* results) {
  const RoadPlans read(files, threads);
  for (const RoadPoints plan : read.Plans()) *results++ = plan.empty() ? -1 : 0;
  state_ = std::make_unique<State>(read.Plans(), threads);
}

Network::~Network() = default;
Network::Network(Network&&) noexcept = default;
Network& Network::operator=(Network&&) noexcept = default;

int Network::Vagstv(double x, double y, int* road, double* sek, double* avst) const {
  Vagstv(&x, &y, 1, road, sek, avst);
  return *road < 0 ? -1 : 0;
}

void Network::Vagstv(const double* x, const double* y, size_t count, int* road, double* sek,
                     double* avst) const {
  state_->search->Find(x, y, count, sek, avst, road);
  for (const State::Unbounded& one : state_->unbounded)
    for (size_t i = 0; i < count; ++i) {
      const std::optional<RoadAnswer> answer = state_->AnswerOf(one, {y[i], x[i]});
      if (!answer || (road[i] >= 0 && !answer->IsBefore({road[i], sek[i], avst[i]}))) continue;
      road[i] = answer->road;
      sek[i] = answer->station;
      avst[i] = answer->offset;
    }
}

std::vector<NetworkPlace> Network::Within(double x, double y, double metres) const {
  const PlanePoint p{y, x};
  std::vector<RoadAnswer> answers;
  state_->search->AddWithin(p, metres, &answers);
  for (const State::Unbounded& one : state_->unbounded) {
    const std::optional<RoadAnswer> answer = state_->AnswerOf(one, p);
    if (answer && std::fabs(answer->offset) <= metres) answers.push_back(*answer);
  }
  std::sort(answers.begin(), answers.end(),
            [](const RoadAnswer& a, const RoadAnswer& b) { return a.IsBefore(b); });
  std::vector<NetworkPlace> places;
  for (const RoadAnswer& answer : answers) places.push_back({answer.road, answer.station, answer.offset});
  return places;
}

}  // namespace velmora
