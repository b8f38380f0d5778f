// Faults in the points of an alignment. Pure functions on points.
#ifndef VELMORA_ALIGNMENT_CHECKS_H_
#define VELMORA_ALIGNMENT_CHECKS_H_

#include <cstdint>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/common/finding.h"

namespace velmora {

// Findings up to a number that bounds the memory for a file with one on every line; of the others the
// number is kept.
struct BoundedFindings {
  static constexpr size_t kMost = 10'000;

  Findings listed;
  std::int64_t left_out = 0;

  std::int64_t Count() const { return static_cast<std::int64_t>(listed.size()) + left_out; }
  void Add(Finding finding) {
    if (listed.size() < kMost)
      listed.push_back(std::move(finding));
    else
      ++left_out;
  }
};

// Coincident points, bulges without an arc or from half a circle, arcs that end beside an axis through their
// centre, and stations that descend, repeat, are out of order or differ from the plan's lengths. `lines`
// holds the line of each point in its file. In the order of the points.
BoundedFindings CheckPlan(const std::vector<kovltype>& points, const std::vector<int>& lines);
// What a look-up of levels by ascending station does not allow.
BoundedFindings CheckProfile(const std::vector<kovltype>& points, const std::vector<int>& lines);

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_CHECKS_H_
