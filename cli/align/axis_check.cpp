#include "cli/align/axis_check.h"

#include <algorithm>

namespace velmora::cli {

AxisCheck::AxisCheck(const Box& box) {
  const double margin = std::max({1000.0, box.max_x - box.min_x, box.max_y - box.min_y});
  box_ = {box.min_x - margin, box.max_x + margin, box.min_y - margin, box.max_y + margin};
}

void AxisCheck::Add(double northing, double easting) {
  near_ += IsNear(northing, easting) ? 1 : 0;
  near_swapped_ += IsNear(easting, northing) ? 1 : 0;
}

bool AxisCheck::LooksSwapped() const { return near_swapped_ > 0 && near_swapped_ > 4 * near_; }

bool AxisCheck::IsNear(double northing, double easting) const {
  return northing >= box_.min_x && northing <= box_.max_x && easting >= box_.min_y && easting <= box_.max_y;
}

}  // namespace velmora::cli
