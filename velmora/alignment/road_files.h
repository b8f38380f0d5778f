// Many alignment files at once, for those who need their points only.
#ifndef VELMORA_ALIGNMENT_ROAD_FILES_H_
#define VELMORA_ALIGNMENT_ROAD_FILES_H_

#include <deque>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/alignment/rewrite_losses.h"
#include "velmora/common/finding.h"
#include "velmora/platform/large_vector.h"
#include "velmora/text/string.h"

namespace velmora {

struct RoadFile {
  std::vector<kovltype> plan;  // of two points or more, or empty
  std::vector<kovltype> profile;
  std::optional<Finding> problem;  // why there is no plan
  SkippedLines skipped;
};

// The files in their order, read by `threads` threads at once (0: one a processor). Pipes and devices are
// not read.
std::vector<RoadFile> ReadRoadFiles(std::span<const CString> files, int threads);

// The plans alone, of two points or more or empty, read likewise.
class RoadPlans {
 public:
  RoadPlans(std::span<const CString> files, int threads);

  const std::vector<std::span<const kovltype>>& Plans() const { return plans_; }

 private:
  std::vector<std::span<const kovltype>> plans_;
  std::deque<std::vector<LargeVector<kovltype>>> pieces_;  // of each thread
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_ROAD_FILES_H_
