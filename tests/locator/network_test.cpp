// Networks beside the locators of their roads, one by one and bit for bit, with each width of vectors that
// this machine has. VELMORA_NETWORK_CASES sets the number of points.
#include "velmora/locator/network.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <thread>
#include <tuple>

#include "tests/locator/any_line.h"
#include "tests/support/test_files.h"
#include "velmora/locator/locator.h"
#include "velmora/locator/network_search.h"
#include "velmora/platform/vector_lanes.h"

namespace velmora {
namespace {

using Roads = std::vector<std::vector<kovltype>>;

// Roads that cross, follow, repeat and reverse each other, and some that lie elsewhere or have no points.
Roads AnyRoads(std::mt19937& random) {
  Roads roads;
  const size_t count = 1 + random() % 8;
  while (roads.size() < count) {
    const auto kind = random() % 8;
    if (kind == 0) {
      roads.emplace_back(random() % 2, kovltype{1, 2, 0, 3});
      continue;
    }
    std::vector<kovltype> road = AnyLine(random, 1 + random() % (random() % 8 == 0 ? 100 : 12));
    if (!roads.empty() && kind < 6) {
      const std::vector<kovltype>& other = roads[random() % roads.size()];
      if (other.empty()) continue;
      if (kind < 4) {  // along the other one, or away from one of its points
        road = other;
        if (kind == 2) std::reverse(road.begin(), road.end());
        const double aside = kind == 3 ? Uniform(random, -1, 1) * std::pow(10, Uniform(random, -9, 2)) : 0;
        for (kovltype& p : road) p.x += aside;
      } else {
        const kovltype from = road[0], to = other[random() % other.size()];
        for (kovltype& p : road) p.x += to.x - from.x, p.y += to.y - from.y;
      }
    }
    roads.push_back(std::move(road));
  }
  return roads;
}

std::uint64_t BitsOf(double value) { return std::bit_cast<std::uint64_t>(std::isnan(value) ? kNan : value); }
using RoadAnswer = std::tuple<int, std::uint64_t, std::uint64_t>;
RoadAnswer AnswerOf(const NetworkPlace& place) { return {place.road, BitsOf(place.sek), BitsOf(place.avst)}; }

// What the roads answer one by one, nearest first.
std::vector<NetworkPlace> OneByOne(const std::vector<Locator>& locators, PlanePoint p) {
  std::vector<NetworkPlace> places;
  for (size_t i = 0; i < locators.size(); ++i) {
    NetworkPlace place{static_cast<int>(i), 0, 0};
    if (locators[i].Vagstv(p.v, p.h, &place.sek, &place.avst) == 0) places.push_back(place);
  }
  std::stable_sort(places.begin(), places.end(), [](const NetworkPlace& a, const NetworkPlace& b) {
    return std::fabs(a.avst) < std::fabs(b.avst);
  });
  return places;
}

// Two threads ask for the same points, and so compute the same ground at once; then both ask again.
TEST(Network, AnswersAsTheRoadsOneByOne) {
  std::mt19937 random(17);
  const char* const wanted = std::getenv("VELMORA_NETWORK_CASES");
  const size_t rounds = (wanted == nullptr ? 100000 : std::strtoull(wanted, nullptr, 10)) / 64;
  size_t found = 0;
  for (size_t round = 0; round < rounds; ++round) {
    const Roads roads = AnyRoads(random);
    std::vector<Locator> locators;
    for (const std::vector<kovltype>& road : roads) locators.emplace_back(road, 1);
    const Network network(roads);
    const std::vector<RoadPoints> spans(roads.begin(), roads.end());
    const NetworkSearch narrow(MergeRoads(spans, std::vector<bool>(roads.size(), true)), CVaglinje::Seknoll,
                               1, BaselineRoutines());
    std::vector<double> x(64), y(64);
    std::vector<RoadAnswer> nearest(64);
    for (size_t i = 0; i < 64; ++i) {
      const std::vector<kovltype>& road = roads[random() % roads.size()];
      const PlanePoint p = road.empty() ? PlanePoint{1, 2} : AnyPlace(random, road);
      x[i] = p.v, y[i] = p.h;
      const std::vector<NetworkPlace> places = OneByOne(locators, p);
      nearest[i] = AnswerOf(places.empty() ? NetworkPlace{-1, CVaglinje::Seknoll, 0} : places[0]);
      found += places.empty() ? 0 : 1;
      if (i % 8 != 0) continue;
      const double metres = places.empty() ? 1e5 : std::fabs(places[random() % places.size()].avst);
      const std::vector<NetworkPlace> within = network.Within(x[i], y[i], metres);
      size_t reached = 0;
      while (reached < places.size() && std::fabs(places[reached].avst) <= metres) ++reached;
      ASSERT_EQ(within.size(), reached) << "round " << round << ", point " << i;
      for (size_t k = 0; k < reached; ++k) ASSERT_EQ(AnswerOf(within[k]), AnswerOf(places[k])) << round;
    }
    const auto ask = [&](const auto& search, std::vector<RoadAnswer>* answers) {
      std::vector<double> sek(64), avst(64);
      std::vector<int> road(64);
      search(x.data(), y.data(), size_t{64}, road.data(), sek.data(), avst.data());
      for (size_t i = 0; i < 64; ++i) answers->push_back(AnswerOf({road[i], sek[i], avst[i]}));
    };
    const auto all = [&](const auto&... arguments) { network.Vagstv(arguments...); };
    const auto merged = [&](const double* px, const double* py, size_t count, int* road, double* sek,
                            double* avst) { narrow.Find(px, py, count, sek, avst, road); };
    for (const bool known : {false, true}) {
      std::vector<RoadAnswer> here, there, baseline;
      std::thread other([&] { ask(all, &there); });
      ask(all, &here);
      other.join();
      for (size_t i = 0; i < 64; ++i) {
        ASSERT_EQ(here[i], nearest[i]) << "round " << round << ", " << known << ": " << x[i] << ", " << y[i];
        ASSERT_EQ(there[i], nearest[i]) << "round " << round << ", " << known << ": " << x[i] << ", " << y[i];
      }
      if (narrow.Plan().HasUnbounded()) continue;  // Network searches those apart
      ask(merged, &baseline);
      ASSERT_EQ(baseline, nearest) << "round " << round << ", " << known;
    }
  }
  EXPECT_GT(found, rounds * 32);
}

// Of files, one of them longer than what is read at once and one that does not end with a line end.
TEST(Network, ReadsTheFilesThatHaveAPlan) {
  const TemporaryFolder folder;
  std::string many = "0 500 0 0 1 $Long$\n";
  for (int i = 1; i < 30000; ++i)
    many += std::to_string(10 * i) + " 500.0 0.0 " + std::to_string(10 * i) + "\r\n";
  const std::string contents[] = {"0 0 0.02 0\r\n100 0 0 101.5", "0 5 0 5\r\n1 6 0 6\r\n", "0 1 0 0\n", many};
  std::vector<CString> files = {folder.File(L"absent.vl")};
  for (const std::string& content : contents) {
    files.push_back(folder.File(FromUtf8(std::to_string(files.size()) + ".vl")));
    WriteBytes(files.back(), content);
  }
  for (const int threads : {1, 3}) {
    std::vector<int> results(files.size());
    const Network network(files, threads, results.data());
    EXPECT_EQ(results, (std::vector<int>{-1, 0, -1, -1, 0}));
    int road = 0;
    double sek = 0, avst = 0;
    EXPECT_EQ(network.Vagstv(50, -1, &road, &sek, &avst), 0);
    EXPECT_EQ(road, 1);
    EXPECT_EQ(network.Vagstv(299990 - 2.5, 490, &road, &sek, &avst), 0);
    EXPECT_EQ(std::tuple(road, sek, avst), std::tuple(4, 299987.5, -10.0));
  }
}

}  // namespace
}  // namespace velmora
