// What writing an alignment back (CVag2::Uppdat) does not keep of the file it was read from.
#ifndef VELMORA_ALIGNMENT_REWRITE_LOSSES_H_
#define VELMORA_ALIGNMENT_REWRITE_LOSSES_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "velmora/alignment/alignment_format.h"
#include "velmora/common/finding.h"

namespace velmora {

// Lines, and parts of lines, that reading ignores. Only empty lines and a bare "*" after the first two are
// left out without a loss.
class LineLosses {
 public:
  // A line as CVag2::Read reports it, in the order of the file. Returns what is found in it.
  Findings Check(int number, LineKind kind, const CString& line);

 private:
  int separators_ = 0;  // so far: the section's first "*", its heading, its second "*", further ones
};

// The lines with text from which reading an alignment takes neither a point nor a separator, or a part only.
class SkippedLines {
 public:
  // What LineLosses finds in a line. Lines of points are not counted.
  void Add(LineKind kind, const Findings& found);
  // One line for people, about the first of them; nothing when there are none.
  std::optional<Finding> Note() const;

 private:
  std::optional<Finding> first_;
  std::int64_t count_ = 0;
};

// Bulges are written with four decimals, which moves the middle of an arc; coordinates and stations move by
// 0.05 mm at most.
struct ArcShift {
  double metres = 0;
  size_t point = 0;  // where the arc begins
};
// The largest shift of an arc's middle.
ArcShift LargestArcShift(const std::vector<kovltype>& points);

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_REWRITE_LOSSES_H_
