// What is wrong with an alignment, and its measures. Pure functions on points.
#ifndef VELMORA_CLI_ALIGN_CHECK_H_
#define VELMORA_CLI_ALIGN_CHECK_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "velmora/alignment/alignment_point.h"

namespace velmora::cli {

struct Finding {
  int line;
  std::string text;
};

// As many findings as anybody reads, so that a file with one in every line takes no more memory than others.
struct Findings {
  static constexpr size_t kMostListed = 10'000;

  std::vector<Finding> listed;
  std::int64_t left_out = 0;

  void Add(int line, std::string text) {
    if (listed.size() < kMostListed)
      listed.push_back({line, std::move(text)});
    else
      ++left_out;
  }
};

// Coincident points, bulges that make no arc, stations that stand still, turn back or differ from the
// plan's lengths. `lines` tells where each point stands. In file order.
Findings CheckPlan(const std::vector<kovltype>& points, const std::vector<int>& lines);
// Levels are looked up by rising station: what stands in the way of that.
Findings CheckProfile(const std::vector<kovltype>& points, const std::vector<int>& lines);

struct Box {
  double min_x, max_x, min_y, max_y;
};

struct PlanMeasures {
  double length = 0;  // along straights and arcs, m
  int arcs = 0;
  std::optional<double> smallest_radius;
  double lowest_station = 0;
  double highest_station = 0;
  Box box{};  // arcs included
};
PlanMeasures MeasurePlan(const std::vector<kovltype>& points);

// The length of the segment from `a` to `b`: of a straight, or of the arc that `a`'s bulge describes.
double SegmentLength(const kovltype& a, const kovltype& b);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_CHECK_H_
