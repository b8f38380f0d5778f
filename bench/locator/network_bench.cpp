// Very many roads at once: the nearest road of many points, beside an R-tree of Boost.Geometry over all
// segments, and opening a folder of road files, beside reading their bytes.
//
//   network_bench [--small] [--json FILE]
//
// Ours and each peer take turns in one process. Times are of this process's processor time, user and system,
// as other work on the machine does not count there; the elapsed time of opening is given beside it.

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "bench/locator/peers.h"
#include "bench/locator/roads.h"
#include "bench/measure.h"
#include "velmora/locator/network.h"
#include "velmora/platform/files.h"
#include "velmora/platform/in_threads.h"

namespace velmora {
namespace {

using bench::Elapsed;
using bench::Median;
using bench::Seconds;

struct Outcome {
  std::vector<double> station, offset;
  std::vector<int> road;

  explicit Outcome(size_t count) : station(count), offset(count), road(count) {}
};

class Bench {
 public:
  explicit Bench(bool small)
      : rounds_(small ? 5 : 7), roads_(small ? 1000 : 10000), points_(small ? 1000000 : 10000000) {}

  void Run() {
    figures_.Head("Very many roads");
    for (const bool arcs : {false, true}) Nearest(arcs);
    for (const bool arcs : {false, true}) Opening(arcs);
  }
  bool Write(const std::string& json) const { return json.empty() || figures_.WriteJson(json); }

 private:
  static constexpr size_t kVertices = 200;

  double Side() const { return 2000 * std::sqrt(static_cast<double>(roads_)); }  // m: 200 km for 10,000 roads
  void Nearest(bool arcs);
  void Opening(bool arcs);

  int rounds_;
  size_t roads_;
  size_t points_;
  bench::Figures figures_;
};

void Bench::Nearest(bool arcs) {
  const std::vector<std::vector<kovltype>> roads = MakeRoads(roads_, kVertices, Side(), arcs);
  const Places places = MakePlaces(roads, points_);
  Outcome ours(points_);
  Outcome theirs(points_);
  std::vector<kovltype> points;
  std::vector<size_t> starts;
  for (const std::vector<kovltype>& road : roads) {
    if (!points.empty()) starts.push_back(points.size());
    points.insert(points.end(), road.begin(), road.end());
  }
  const auto ask = [&](const Network& network) {
    network.Vagstv(places.x.data(), places.y.data(), points_, ours.road.data(), ours.station.data(),
                   ours.offset.data());
  };
  const auto ask_peer = [&](const Peer& peer, size_t count) {
    peer.Locate(places, count, theirs.station.data(), theirs.offset.data());
  };

  std::unique_ptr<Peer> peer;
  double fastest = 0;
  for (const int most : {4, 8, 16})
    for (const bool sorted : {false, true}) {
      std::unique_ptr<Peer> one = MakeBoostPeer(points, arcs, most, sorted, starts);
      const double seconds = Seconds([&] { ask_peer(*one, points_ / 10); });
      if (peer != nullptr && seconds >= fastest) continue;
      peer = std::move(one);
      fastest = seconds;
    }
  std::vector<double> us, them, ratios, firsts, their_firsts, first_ratios;
  for (int round = 0; round < rounds_; ++round) {
    std::unique_ptr<Network> network;
    firsts.push_back(Seconds([&] {
      network = std::make_unique<Network>(roads);
      ask(*network);
    }));
    us.push_back(Seconds([&] { ask(*network); }));
    them.push_back(Seconds([&] { ask_peer(*peer, points_); }));
    ratios.push_back(them.back() / us.back());
    their_firsts.push_back(them.back() + Seconds([&] { MakeBoostPeer(points, arcs, 4, false, starts); }));
    first_ratios.push_back(their_firsts.back() / firsts.back());
  }
  const std::string name = std::to_string(roads_) + " roads" + (arcs ? ", arcs" : "");
  const double per_point = 1e9 / static_cast<double>(points_);
  figures_.Add({name + ", later", Median(us) * per_point, Median(them) * per_point, "ns", peer->Name(),
                Median(ratios), bench::Noise(ratios)});
  figures_.Add({name + ", first, with building", Median(firsts) * per_point, Median(their_firsts) * per_point,
                "ns", peer->Name(), Median(first_ratios), bench::Noise(first_ratios)});
}

void Bench::Opening(bool arcs) {
  namespace fs = std::filesystem;
  const fs::path folder = fs::temp_directory_path() / "velmora_network_bench";
  fs::create_directories(folder);
  std::vector<std::string> names;
  std::vector<CString> files;
  for (const std::vector<kovltype>& road : MakeRoads(roads_, kVertices, Side(), arcs)) {
    names.push_back((folder / (std::to_string(names.size()) + ".vl")).string());
    files.push_back(PathFromSystem(names.back()));
    std::ofstream out(names.back());
    for (const kovltype& p : road) {
      char line[100];
      const int length =
          std::snprintf(line, sizeof line, "%.4f %.4f %.6f %.4f\r\n", p.x, p.y, p.bulge, p.sek);
      out.write(line, length);
    }
  }
  std::vector<int> results(files.size());
  const auto open = [&](int threads) { const Network network(files, threads, results.data()); };
  const auto read_one = [&](size_t i, std::vector<char>& bytes) {
    std::FILE* const file = std::fopen(names[i].c_str(), "rb");
    bytes.resize(fs::file_size(names[i]));
    if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) std::abort();
    std::fclose(file);
  };
  const auto read = [&](int threads) {
    InThreads(
        names.size(), threads, [] { return std::vector<char>(); }, read_one);
  };
  for (const std::pair<int, int>& both : {std::pair{1, 1}, std::pair{2, 1}, std::pair{2, 2}}) {
    const int threads = both.first;
    const int their_threads = both.second;
    std::vector<double> us, them, ratios, elapsed, their_elapsed, elapsed_ratios;
    for (int round = 0; round < rounds_ * 3; ++round) {
      us.push_back(Seconds([&] { elapsed.push_back(Elapsed([&] { open(threads); })); }));
      them.push_back(Seconds([&] { their_elapsed.push_back(Elapsed([&] { read(their_threads); })); }));
      ratios.push_back(them.back() / us.back());
      elapsed_ratios.push_back(their_elapsed.back() / elapsed.back());
    }
    const std::string name = "opening " + std::to_string(roads_) + (arcs ? " files" : " straight") + ", " +
                             std::to_string(threads) + (threads == 1 ? " thread" : " threads");
    const std::string peer = std::string("reading their bytes") + (their_threads == 1 ? "" : ", two threads");
    figures_.Add({name + ", processor", Median(us) * 1e3, Median(them) * 1e3, "ms", peer, Median(ratios),
                  bench::Noise(ratios)});
    figures_.Add({name + ", elapsed", Median(elapsed) * 1e3, Median(their_elapsed) * 1e3, "ms", peer,
                  Median(elapsed_ratios), bench::Noise(elapsed_ratios)});
  }
  fs::remove_all(folder);
}

int Main(int count, char** words) {
  bool small = false;
  std::string json;
  if (!bench::ReadOptions(count, words, {{"--small", &small}}, {{"--json", &json}})) {
    std::fprintf(stderr, "network_bench: try [--small] [--json FILE]\n");
    return 2;
  }
  Bench bench(small);
  bench.Run();
  if (bench.Write(json)) return 0;
  std::fprintf(stderr, "network_bench: cannot write the results; is there room in the folder?\n");
  return 1;
}

}  // namespace
}  // namespace velmora

int main(int count, char** words) { return velmora::Main(count, words); }
