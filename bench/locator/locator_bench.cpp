// Station and offset of many points, beside an R-tree of Boost.Geometry and a prepared line of GEOS.
//
//   locator_bench [--small] [--json FILE] [--plots FOLDER]
//
// Ours and each peer take turns in one process, and times are processor time but for those of two threads, so
// that a ratio holds on a shared machine too; each figure is the median of its rounds. The peer is the
// fastest of its variants in a trial just before. "First" is the first time over ground that nothing is known
// of, building included on both sides; "later" is every other.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <iomanip>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "bench/locator/chart.h"
#include "bench/locator/peers.h"
#include "bench/locator/roads.h"
#include "bench/measure.h"
#include "velmora/alignment/vaglinje.h"
#include "velmora/locator/locator.h"
#include "velmora/locator/plan_search.h"
#include "velmora/platform/vector_lanes.h"

namespace velmora {
namespace {

using bench::Elapsed;
using bench::Median;
using bench::Seconds;

class Bench {
 public:
  explicit Bench(bool small) : small_(small), rounds_(small ? 5 : 9) {}

  void Run();
  bool Write(const std::string& json, const std::string& plots) const;

 private:
  struct Outcome {
    std::vector<double> station, offset;
    std::vector<int> result;

    explicit Outcome(size_t count) : station(count), offset(count), result(count) {}
  };

  size_t Points(size_t vertices) const {
    return std::max<size_t>(small_ ? 200000 : 1000000, small_ ? 0 : vertices * 2);
  }
  void Add(const std::string& name, double ours, double theirs, const std::vector<double>& ratios,
           const std::string& unit, const std::string& peer);
  void AgainstBoost(size_t vertices, bool arcs, Order order);
  void AgainstGeos(size_t vertices);
  void Building(size_t vertices);
  void Lanes(size_t vertices);
  void Threads(size_t vertices);
  void Walks(size_t vertices);
  void GrowthWithPoints(size_t vertices, bool drawn);

  static void Locate(const Locator& locator, const Places& places, size_t from, size_t to, Outcome* out) {
    locator.Vagstv(&places.x[from], &places.y[from], to - from, &out->station[from], &out->offset[from],
                   &out->result[from]);
  }

  bool small_;
  int rounds_;
  bench::Figures figures_;
  std::vector<ChartLine> by_vertices_ = {{"along the road", {}, {}},
                                         {"in random order", {}, {}},
                                         {"Boost, along", {}, {}},
                                         {"Boost, random", {}, {}}};
  std::vector<ChartLine> by_points_ = {{"first, with building", {}, {}},
                                       {"later", {}, {}},
                                       {"Boost, with building", {}, {}},
                                       {"Boost, later", {}, {}}};
};

void Bench::Add(const std::string& name, double ours, double theirs, const std::vector<double>& ratios,
                const std::string& unit, const std::string& peer) {
  figures_.Add({name, ours, theirs, unit, peer, Median(ratios), bench::Noise(ratios)});
}

std::string Case(size_t vertices, bool arcs, Order order) {
  std::ostringstream name;
  name << vertices << " vertices, " << (arcs ? "arcs, " : "")
       << (order == Order::kAlong ? "along" : "random");
  return name.str();
}

void Bench::AgainstBoost(size_t vertices, bool arcs, Order order) {
  const std::vector<kovltype> road = MakeRoad(vertices, arcs);
  const size_t count = Points(vertices);
  const Places places = MakePlaces(road, count, order);
  Outcome ours(count);
  Outcome theirs(count);

  const size_t trial = std::min<size_t>(count, small_ ? 100000 : 1000000);
  std::unique_ptr<Peer> peer;
  double fastest = 0;
  for (const int most : {4, 8, 16})
    for (const bool sorted : {false, true}) {
      if (sorted && order == Order::kAlong) continue;
      std::unique_ptr<Peer> one = MakeBoostPeer(road, arcs, most, sorted);
      const double seconds =
          Seconds([&] { one->Locate(places, trial, theirs.station.data(), theirs.offset.data()); });
      if (peer != nullptr && seconds >= fastest) continue;
      peer = std::move(one);
      fastest = seconds;
    }

  const Locator locator(road, 1);
  Locate(locator, places, 0, count, &ours);
  std::vector<double> our_times;
  std::vector<double> their_times;
  std::vector<double> ratios;
  for (int round = 0; round < rounds_; ++round) {
    our_times.push_back(Seconds([&] { Locate(locator, places, 0, count, &ours); }));
    their_times.push_back(
        Seconds([&] { peer->Locate(places, count, theirs.station.data(), theirs.offset.data()); }));
    ratios.push_back(their_times.back() / our_times.back());
  }
  const double per_point = 1e9 / static_cast<double>(count);
  const double us = Median(our_times) * per_point;
  const double them = Median(their_times) * per_point;
  Add(Case(vertices, arcs, order), us, them, ratios, "ns", peer->Name());
  if (arcs) return;
  const size_t line = order == Order::kAlong ? 0 : 1;
  for (const auto& [at, value] : {std::pair{line, us}, std::pair{line + 2, them}}) {
    by_vertices_[at].x.push_back(static_cast<double>(vertices));
    by_vertices_[at].y.push_back(value);
  }
}

void Bench::AgainstGeos(size_t vertices) {
  const std::vector<kovltype> road = MakeRoad(vertices, false);
  const size_t count = Points(vertices);
  const size_t for_geos = count / 20;
  const Places places = MakePlaces(road, count, Order::kRandom);
  Outcome out(count);
  const Locator locator(road, 1);
  const std::unique_ptr<Peer> peer = MakeGeosPeer(road);
  Locate(locator, places, 0, count, &out);
  peer->Locate(places, 100, out.station.data(), out.offset.data());
  std::vector<double> us;
  std::vector<double> them;
  std::vector<double> ratios;
  for (int round = 0; round < rounds_; ++round) {
    us.push_back(Seconds([&] { Locate(locator, places, 0, count, &out); }) / static_cast<double>(count) *
                 1e9);
    them.push_back(Seconds([&] { peer->Locate(places, for_geos, out.station.data(), out.offset.data()); }) /
                   static_cast<double>(for_geos) * 1e9);
    ratios.push_back(them.back() / us.back());
  }
  Add(Case(vertices, false, Order::kRandom), Median(us), Median(them), ratios, "ns", peer->Name());
}

void Bench::Building(size_t vertices) {
  const std::vector<kovltype> road = MakeRoad(vertices, false);
  const int times = static_cast<int>(std::max<size_t>(1, 20000 / vertices));
  std::vector<double> us;
  std::vector<double> them;
  std::vector<double> ratios;
  for (int round = 0; round < rounds_; ++round) {
    us.push_back(1e6 / times * Seconds([&] {
                   for (int i = 0; i < times; ++i) const Locator locator(road, 1);
                 }));
    them.push_back(1e6 / times * Seconds([&] {
                     for (int i = 0; i < times; ++i) MakeBoostPeer(road, false, 4, false);
                   }));
    ratios.push_back(them.back() / us.back());
  }
  Add(std::to_string(vertices) + " vertices, building", Median(us), Median(them), ratios, "us",
      "Boost R-tree, 4 a node");
}

// The batch search with the vectors of better processors beside those of every one.
void Bench::Lanes(size_t vertices) {
  if (!HasWideLanes()) return;
  const std::vector<kovltype> road = MakeRoad(vertices, false);
  const size_t count = Points(vertices);
  const Places places = MakePlaces(road, count, Order::kAlong);
  Outcome out(count);
  const PlanSearch wide(PlanSnapshot(road, CVaglinje::Seknoll), WideRoutines());
  const PlanSearch baseline(PlanSnapshot(road, CVaglinje::Seknoll), BaselineRoutines());
  const auto find = [&](const PlanSearch& search) {
    search.Find(places.x.data(), places.y.data(), count, out.station.data(), out.offset.data(),
                out.result.data());
  };
  find(wide);
  find(baseline);
  const bench::Pair seconds = bench::TakeTurns(
      rounds_, [&] { find(wide); }, [&] { find(baseline); });
  const double per_point = 1e9 / static_cast<double>(count);
  figures_.Add({Case(vertices, false, Order::kAlong) + ", wide lanes", seconds.ours * per_point,
                seconds.theirs * per_point, "ns", "baseline lanes", seconds.ratio, seconds.noise});
}

void Bench::Threads(size_t vertices) {
  const std::vector<kovltype> road = MakeRoad(vertices, false);
  const size_t count = Points(vertices) * 4;
  const Places places = MakePlaces(road, count, Order::kAlong);
  Outcome out(count);
  const Locator locator(road, 1);
  Locate(locator, places, 0, count, &out);
  std::vector<double> one;
  std::vector<double> two;
  std::vector<double> ratios;
  // So many batches that the start of a thread is small beside them.
  constexpr int kBatches = 8;
  const auto locate = [&](size_t begin, size_t end) {
    for (int batch = 0; batch < kBatches; ++batch) Locate(locator, places, begin, end, &out);
  };
  const double each = 1e9 / (kBatches * static_cast<double>(count));
  for (int round = 0; round < rounds_; ++round) {
    one.push_back(each * Elapsed([&] { locate(0, count); }));
    two.push_back(each * Elapsed([&] {
                    std::thread other([&] { locate(count / 2, count); });
                    locate(0, count / 2);
                    other.join();
                  }));
    ratios.push_back(one.back() / two.back());
  }
  Add(Case(vertices, false, Order::kAlong) + ", two threads", Median(two), Median(one), ratios, "ns",
      "one thread");
}

// Station and offset to map point, and a profile's level, beside the walk over the list.
void Bench::Walks(size_t vertices) {
  const std::vector<kovltype> road = MakeRoad(vertices, false);
  std::vector<kovltype> profile = road;
  for (kovltype& p : profile) p = {p.x, p.sek, 0, p.sek};
  const size_t count = Points(vertices);
  const size_t walked = std::max<size_t>(20000000 / vertices, 10);
  std::vector<double> station(count);
  for (size_t i = 0; i < count; ++i)
    station[i] =
        road.back().sek * static_cast<double>((i * 2654435761u) % count) / static_cast<double>(count);
  const std::vector<double> offset(count, 5.0);
  Outcome out(count);
  for (const bool plan : {true, false}) {
    const Locator locator(plan ? road : profile, plan ? 1 : 10);
    CVaglinje line;
    line.typ = plan ? 1 : 10;
    for (const kovltype& p : plan ? road : profile) line.Ny(1, &p);
    std::vector<double> us;
    std::vector<double> them;
    std::vector<double> ratios;
    for (int round = 0; round < rounds_; ++round) {
      us.push_back(1e9 / static_cast<double>(count) * Seconds([&] {
                     if (plan)
                       locator.Vag2xy(station.data(), offset.data(), count, out.station.data(),
                                      out.offset.data(), out.result.data());
                     else
                       locator.Vagprofz(station.data(), count, out.station.data(), out.result.data());
                   }));
      them.push_back(1e9 / static_cast<double>(walked) * Seconds([&] {
                       for (size_t i = 0; i < walked; ++i)
                         out.result[i] =
                             plan ? line.Vag2xy(station[i], offset[i], &out.station[i], &out.offset[i])
                                  : line.Vagprofz(station[i], &out.station[i]);
                     }));
      ratios.push_back(them.back() / us.back());
    }
    Add(std::to_string(vertices) + (plan ? " vertices, station to point" : " vertices, station to level"),
        Median(us), Median(them), ratios, "ns", "the walk");
  }
}

// Seconds for ever more points beside one road, building included. The largest road's are drawn.
void Bench::GrowthWithPoints(size_t vertices, bool drawn) {
  const std::vector<kovltype> road = MakeRoad(vertices, false);
  for (size_t count = 100; count <= (small_ ? 1000000u : 10000000u); count *= 10) {
    const Places places = MakePlaces(road, count, Order::kRandom);
    Outcome out(count);
    constexpr int kRounds = 5;
    const size_t times = std::max<size_t>(1, 20000 / (vertices + count));
    std::vector<double> firsts, laters, boosts, boost_laters, ratios;
    for (int round = 0; round < kRounds; ++round) {
      double later = 0;
      const double both = Seconds([&] {
        for (size_t i = 0; i < times; ++i) {
          const Locator locator(road, 1);
          Locate(locator, places, 0, count, &out);
          if (drawn) later += Seconds([&] { Locate(locator, places, 0, count, &out); });
        }
      });
      firsts.push_back((both - later) / static_cast<double>(times));
      laters.push_back(later / static_cast<double>(times));
      double boost_later = 0;
      boosts.push_back(Seconds([&] {
                         for (size_t i = 0; i < times; ++i) {
                           const std::unique_ptr<Peer> peer = MakeBoostPeer(road, false, 4, count >= 1000);
                           const auto ask = [&] {
                             peer->Locate(places, count, out.station.data(), out.offset.data());
                           };
                           if (drawn)
                             boost_later += Seconds(ask);
                           else
                             ask();
                         }
                       }) /
                       static_cast<double>(times));
      boost_laters.push_back(boost_later / static_cast<double>(times));
      ratios.push_back(boosts.back() / firsts.back());
    }
    const double first = Median(firsts);
    const double boost = Median(boosts);
    Add(std::to_string(vertices) + " vertices, " + std::to_string(count) + " points, first", first * 1e3,
        boost * 1e3, ratios, "ms", "Boost R-tree, built and asked");
    if (!drawn) continue;
    for (size_t i = 0; const double seconds : {first, Median(laters), boost, Median(boost_laters)}) {
      by_points_[i].x.push_back(static_cast<double>(count));
      by_points_[i++].y.push_back(seconds * 1000);
    }
  }
}

void Bench::Run() {
  figures_.Head("Station and offset of many points");
  const std::vector<size_t> sizes = small_ ? std::vector<size_t>{100, 10000, 1000000}
                                           : std::vector<size_t>{100, 1000, 10000, 100000, 1000000};
  for (const size_t vertices : sizes)
    for (const Order order : {Order::kAlong, Order::kRandom}) AgainstBoost(vertices, false, order);
  for (const size_t vertices : {size_t{100}, size_t{10000}, size_t{1000000}}) {
    if (small_ && vertices == 1000000) continue;
    for (const Order order : {Order::kAlong, Order::kRandom}) AgainstBoost(vertices, true, order);
  }
  for (const size_t vertices : sizes) Building(vertices);
  for (const size_t vertices : sizes)
    if (!small_ || vertices < 1000000) AgainstGeos(vertices);
  Lanes(10000);
  Threads(10000);
  Walks(10000);
  GrowthWithPoints(300, false);
  for (const size_t vertices : sizes)
    GrowthWithPoints(vertices, vertices == (small_ ? size_t{10000} : size_t{1000000}));
}

bool Bench::Write(const std::string& json, const std::string& plots) const {
  const bool written = json.empty() || figures_.WriteJson(json);
  if (plots.empty()) return written;
  std::ofstream vertices(plots + "/locator-vertices.svg");
  vertices << DrawChart("Station and offset: time a point", "vertices", "ns a point", by_vertices_);
  std::ofstream points(plots + "/locator-points.svg");
  points << DrawChart("Station and offset: time in all", "points", "ms", by_points_);
  return written && vertices.flush() && points.flush();
}

int Main(int count, char** words) {
  bool small = false;
  std::string json;
  std::string plots;
  for (int i = 1; i < count; ++i) {
    const bool more = i + 1 < count;
    if (std::strcmp(words[i], "--small") == 0) {
      small = true;
    } else if (std::strcmp(words[i], "--json") == 0 && more) {
      json = words[++i];
    } else if (std::strcmp(words[i], "--plots") == 0 && more) {
      plots = words[++i];
    } else {
      std::fprintf(stderr,
                   "locator_bench: \"%s\" is not an option; try [--small] [--json FILE] [--plots FOLDER]\n",
                   words[i]);
      return 2;
    }
  }
  Bench bench(small);
  bench.Run();
  if (bench.Write(json, plots)) return 0;
  std::fprintf(stderr, "locator_bench: cannot write the results; is there room in the folder?\n");
  return 1;
}

}  // namespace
}  // namespace velmora

int main(int count, char** words) { return velmora::Main(count, words); }
