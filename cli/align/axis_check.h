// Notices points whose northing and easting are exchanged.
#ifndef VELMORA_CLI_ALIGN_AXIS_CHECK_H_
#define VELMORA_CLI_ALIGN_AXIS_CHECK_H_

#include <cstdint>

#include "cli/align/check.h"

namespace velmora::cli {

class AxisCheck {
 public:
  // "Near" is within the alignment's box, widened by its own size and at least a kilometre.
  explicit AxisCheck(const Box& box);
  void Add(double northing, double easting);
  // What another check of the same alignment counted.
  void Add(const AxisCheck& other) {
    near_ += other.near_;
    near_swapped_ += other.near_swapped_;
  }
  // Whether far more points would lie near the road with their axes exchanged.
  bool LooksSwapped() const;
  std::int64_t Near() const { return near_; }
  std::int64_t NearSwapped() const { return near_swapped_; }

 private:
  bool IsNear(double northing, double easting) const;

  Box box_;
  std::int64_t near_ = 0;
  std::int64_t near_swapped_ = 0;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_AXIS_CHECK_H_
