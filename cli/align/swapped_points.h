// Notices points whose northing and easting are exchanged.
#ifndef VELMORA_CLI_ALIGN_SWAPPED_POINTS_H_
#define VELMORA_CLI_ALIGN_SWAPPED_POINTS_H_

#include <cstdint>
#include <string>

#include "cli/input/list_options.h"
#include "velmora/alignment/measures.h"

namespace velmora::cli {

class SwappedPoints {
 public:
  explicit SwappedPoints(const BoundingBox& bounds) : check_(bounds) {}
  void Add(std::int64_t line, double northing, double easting);
  // Those of points further down the list.
  void Add(const SwappedPoints& other);

  // Whether they are more than half of the points.
  bool AreMost() const { return 2 * check_.NearSwapped() > points_; }
  // Prints a line when there are any: the option that exchanges the axes where it helps, else the first one.
  void Report(const std::string& list, const ListOptions& options) const;

 private:
  AxisCheck check_;
  std::int64_t points_ = 0;
  std::int64_t first_line_ = 0;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_SWAPPED_POINTS_H_
