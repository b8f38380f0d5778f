// Alignments, combined files and point lists, read and written beside what a program without velmora would
// do at best (peers.h), and `align locate` beside copying its two files.
//
//   files_bench [--small] [--json FILE] [--folder DIR] [--velmora COMMAND]
//
// Ours and the peer take turns in one process; each figure is the median of its rounds. The files lie in
// memory (/dev/shm) unless a folder is named, so that a figure is of the program and not of a disk: ours
// flush what they write, the peers do not.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "bench/files/made_up.h"
#include "bench/files/peers.h"
#include "bench/measure.h"
#include "velmora/alignment/vag2.h"

namespace velmora::bench {
namespace {

class FilesBench {
 public:
  explicit FilesBench(const FileSettings& settings)
      : settings_(settings),
        rounds_(settings.small ? 5 : 11),
        count_(settings.small ? 200'000 : 1'000'000),
        folder_(settings.folder) {
    std::mt19937 random(2);
    points_.plan = MadeUpPlan(count_);
    for (int i = 0; i < count_; ++i) {
      stdpkttype support{};
      const std::string name = "P" + std::to_string(i);
      std::copy(name.begin(), name.end(), support.namn);
      support.z = static_cast<float>(static_cast<double>(random() % 1'000'000) * 1e-4);
      support_.push_back(support);
    }
  }
  FilesBench(const FilesBench&) = delete;
  FilesBench& operator=(const FilesBench&) = delete;

  int Run() {
    figures_.Head("Files of " + std::to_string(count_) + " points in " + settings_.folder +
                  ", MB/s unless stated");
    Alignment();
    Combined();
    SupportPoints();
    if (!settings_.velmora.empty()) Locate();
    return settings_.json.empty() || figures_.WriteJson(settings_.json) ? 0 : 1;
  }

 private:
  std::string File(const char* name) const { return folder_.File(name); }
  static CString Path(const std::string& file) { return PathFromSystem(file); }

  void Add(const std::string& name, const std::string& file, const Pair& seconds, const char* peer) {
    const double megabytes = static_cast<double>(std::filesystem::file_size(file)) / 1e6;
    figures_.Add({name, megabytes / seconds.ours, megabytes / seconds.theirs, "MB/s", peer, seconds.ratio,
                  seconds.noise});
  }
  static constexpr const char* kReader = "fast_float over a mapped file";
  static constexpr const char* kWriter = "std::to_chars and write";

  void Alignment() {
    const std::string file = File("road.vl");
    const std::string ours = File("ours.vl");
    const std::string theirs = File("theirs.vl");
    WritePoints(file, {points_.plan, {}});
    Points read;
    CVaglinje line;
    const Pair reading = TakeTurns(
        rounds_, [&] { Require(line.Init(Path(file)) == 0, "cannot read an alignment"); },
        [&] { read = ReadPoints(file); });
    const std::vector<kovltype> points = line.Points();
    Require(points.size() == read.plan.size() &&
                std::memcmp(points.data(), read.plan.data(), points.size() * sizeof(kovltype)) == 0,
            "the alignment was read differently");
    Add("alignment, read", file, reading, kReader);
    const Pair writing = TakeTurns(
        rounds_, [&] { Require(line.Uppdat(Path(ours)) == 0, "cannot write an alignment"); },
        [&] { WritePoints(theirs, read); });
    Add("alignment, written", ours, writing, kWriter);
  }

  void Combined() {
    const std::string file = File("both.vl");
    const std::string ours = File("ours.vl");
    const std::string theirs = File("theirs.vl");
    Points points = points_;
    points.plan.resize(points.plan.size() / 2);
    points.profile.assign(points_.plan.begin() + static_cast<std::ptrdiff_t>(points.plan.size()),
                          points_.plan.end());
    WritePoints(file, points);
    Points read;
    CVag2 set;
    const Pair reading = TakeTurns(
        rounds_, [&] { Require(set.Init(Path(file)) == 0, "cannot read a combined file"); },
        [&] { read = ReadPoints(file); });
    Require(set.plan.Points().size() == read.plan.size() && set.profil.Points().size() == read.profile.size(),
            "the combined file was read differently");
    Add("combined file, read", file, reading, kReader);
    const Pair writing = TakeTurns(
        rounds_, [&] { Require(set.Uppdat(Path(ours)) == 0, "cannot write a combined file"); },
        [&] { WritePoints(theirs, read); });
    Add("combined file, written", ours, writing, kWriter);
  }

  void SupportPoints() {
    const std::string file = File("points.stp");
    const std::string ours = File("ours.stp");
    const std::string theirs = File("theirs.stp");
    WriteSupportPoints(file, support_);
    std::vector<stdpkttype> read;
    int count = 0;
    const Pair reading = TakeTurns(
        rounds_,
        [&] {
          CStodPunkt points(Path(file));
          points.Where(&count);
        },
        [&] { read = ReadSupportPoints(file); });
    Require(static_cast<size_t>(count) == read.size(), "the support points were read differently");
    Add("support points, read", file, reading, kReader);
    CStodPunkt points(Path(file));
    const Pair writing = TakeTurns(
        rounds_, [&] { Require(points.Uppdat(Path(ours)) == 0, "cannot write support points"); },
        [&] { WriteSupportPoints(theirs, read); });
    Add("support points, written", ours, writing, kWriter);
  }

  void Locate() {
    const int rows = settings_.small ? 500'000 : 10'000'000;
    const std::string road = File("curve.vl");
    const std::string list = File("points.csv");
    const std::string result = File("placed.csv");
    {
      std::ofstream(road)
          << "6652231.8750 653118.4620 0 1200 1 $Väg\r\n6652260.4086 653298.6164 -0.0963 "
             "1382.4\r\n6652252.4118 653527.4730 0 1612.8095\r\n6652200.0 653900.0 0 1989.0\r\n";
      std::ofstream out(list);
      out << "id,northing,easting,level\n";
      std::mt19937 random(2);
      char row[128];
      for (int i = 0; i < rows; ++i) {
        const auto part = [&random](unsigned below) { return static_cast<double>(random() % below); };
        std::snprintf(row, sizeof row, "P%d,%.3f,%.3f,%.2f\n", i, 6'652'100 + part(300'000) * 1e-3,
                      653'000 + part(1'000'000) * 1e-3, part(4000) * 1e-2);
        out << row;
      }
    }
    for (const int threads : {1, 2}) {
      const std::string command = "'" + settings_.velmora + "' align locate '" + road + "' --points '" +
                                  list + "' -o '" + result + "' --threads " + std::to_string(threads);
      const Pair seconds = TakeTurns(
          5, [&] { Require(std::system(command.c_str()) == 0, "align locate failed"); },
          [&] {
            if (!std::filesystem::exists(result)) return;
            for (const std::string& file : {list, result})
              std::filesystem::copy_file(file, file + ".copy",
                                         std::filesystem::copy_options::overwrite_existing);
          },
          bench::Elapsed);
      figures_.Add({"align locate, threads " + std::to_string(threads), seconds.ours * 1e3,
                    seconds.theirs * 1e3, "ms", "copying list and result", seconds.ratio, seconds.noise});
    }
  }

  FileSettings settings_;
  int rounds_;
  int count_;
  BenchFolder folder_;
  Points points_;
  std::vector<stdpkttype> support_;
  Figures figures_;
};

}  // namespace
}  // namespace velmora::bench

int main(int argc, char** argv) {
  velmora::bench::FileSettings settings;
  if (!velmora::bench::ReadOptions(
          argc, argv, {{"--small", &settings.small}},
          {{"--json", &settings.json}, {"--folder", &settings.folder}, {"--velmora", &settings.velmora}})) {
    std::fprintf(stderr, "files_bench [--small] [--json FILE] [--folder DIR] [--velmora COMMAND]\n");
    return 2;
  }
  return velmora::bench::FilesBench(settings).Run();
}
