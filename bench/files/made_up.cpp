#include "bench/files/made_up.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <system_error>

namespace velmora::bench {

void Require(bool good, const char* what) {
  if (good) return;
  std::fprintf(stderr, "bench: %s\n", what);
  std::exit(1);
}

std::vector<kovltype> MadeUpPlan(int count) {
  std::mt19937 random(1);
  const auto part = [&random](unsigned below, double unit) {
    return static_cast<double>(random() % below) * unit;
  };
  std::vector<kovltype> plan;
  double station = 0;
  for (int i = 0; i < count; ++i) {
    station += part(100'000, 1e-4);
    const double northing = 6'580'000 + i * 0.7 + part(10'000, 1e-4);
    const double easting = 150'000 + part(100'000'000, 1e-4);
    plan.push_back({northing, easting, i % 3 == 0 ? part(2000, 1e-4) - 0.1 : 0, station});
  }
  return plan;
}

BenchFolder::BenchFolder(const std::string& parent) : path_(parent + "/velmora-bench") {
  std::filesystem::create_directories(path_);
}

BenchFolder::~BenchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace velmora::bench
