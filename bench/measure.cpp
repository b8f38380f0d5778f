#include "bench/measure.h"

#include <time.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <thread>

namespace velmora::bench {

double Seconds(const std::function<void()>& action) {
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
  };
  const double start = now();
  action();
  return now() - start;
}

double Elapsed(const std::function<void()>& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

double Noise(std::vector<double> ratios) {
  const double median = Median(ratios);
  std::sort(ratios.begin(), ratios.end());
  return ratios.size() < 4 ? 0 : (ratios[ratios.size() - 2] - ratios[1]) / median;
}

std::string Machine() {
  std::string processor = "unknown processor";
  std::ifstream in("/proc/cpuinfo");
  for (std::string line; std::getline(in, line);)
    if (line.starts_with("model name")) processor = line.substr(line.find(':') + 2);
  return processor + ", " + std::to_string(std::thread::hardware_concurrency()) +
         " processors; GCC " __VERSION__ ", " VELMORA_BENCH_FLAGS;
}

Pair TakeTurns(int rounds, const std::function<void()>& ours, const std::function<void()>& theirs,
               Measure measure) {
  std::vector<double> a;
  std::vector<double> b;
  std::vector<double> ratios;
  for (int round = 0; round < rounds; ++round) {
    b.push_back(measure(theirs));
    a.push_back(measure(ours));
    ratios.push_back(b.back() / a.back());
  }
  return {Median(a), Median(b), Median(ratios), Noise(ratios)};
}

void Figures::Head(const std::string& what) const {
  std::printf("%s\n%s\n\n%-40s %10s %10s %-5s %7s %6s  %s\n", what.c_str(), Machine().c_str(), "", "ours",
              "peer", "", "ratio", "noise", "peer");
}

void Figures::Add(Figure figure) {
  std::printf("%-40s %10.1f %10.1f %-5s %7.2f %5.0f%%  %s\n", figure.name.c_str(), figure.ours, figure.theirs,
              figure.unit.c_str(), figure.ratio, figure.noise * 100, figure.peer.c_str());
  std::fflush(stdout);
  figures_.push_back(std::move(figure));
}

bool Figures::WriteJson(const std::string& file) const {
  std::ofstream out(file);
  out << "{\"machine\": \"" << Machine() << "\",\n \"figures\": [";
  const char* between = "\n";
  for (const Figure& f : figures_) {
    out << between << "  {\"name\": \"" << f.name << "\", \"ours\": " << f.ours << ", \"peer\": " << f.theirs
        << ", \"unit\": \"" << f.unit << "\", \"ratio\": " << f.ratio << ", \"noise\": " << f.noise
        << ", \"beside\": \"" << f.peer << "\"}";
    between = ",\n";
  }
  out << "\n]}\n";
  return static_cast<bool>(out.flush());
}

bool ReadOptions(int count, char** words, const std::map<std::string, bool*>& switches,
                 const std::map<std::string, std::string*>& texts) {
  for (int i = 1; i < count; ++i) {
    if (words[i] == std::string("--machine")) {
      std::puts(Machine().c_str());
      std::exit(0);
    }
    if (const auto set = switches.find(words[i]); set != switches.end()) {
      *set->second = true;
    } else if (const auto text = texts.find(words[i]); text != texts.end() && i + 1 < count) {
      *text->second = words[++i];
    } else {
      return false;
    }
  }
  return true;
}

}  // namespace velmora::bench
