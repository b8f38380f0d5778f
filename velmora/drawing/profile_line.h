// The line of a profile as the drawing runs along it: level over station.
#ifndef VELMORA_DRAWING_PROFILE_LINE_H_
#define VELMORA_DRAWING_PROFILE_LINE_H_

#include <optional>
#include <span>
#include <vector>

#include "velmora/alignment/alignment_point.h"

namespace velmora::drawing {

struct ProfilePlace {
  double station;
  double level;
};

class ProfileLine {
 public:
  // Points that cannot be drawn count as absent.
  explicit ProfileLine(std::span<const kovltype> points);

  const std::vector<kovltype>& Points() const { return points_; }
  size_t LeftOut() const { return left_out_; }
  bool IsEmpty() const { return points_.size() < 2; }

  // The line as straight pieces, vertical curves by a point at least every `step` metres.
  std::vector<ProfilePlace> Samples(double step) const;
  // As the library's look-up: from the first point on to before the last.
  std::optional<double> LevelAt(double station) const;

 private:
  std::vector<kovltype> points_;
  size_t left_out_ = 0;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PROFILE_LINE_H_
