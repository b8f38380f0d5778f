// Support points by the block, between a file's bytes and records: the lines that stod_punkt.cpp reads and
// writes one by one, where they are plain ASCII.
#ifndef VELMORA_ALIGNMENT_SUPPORT_LINES_H_
#define VELMORA_ALIGNMENT_SUPPORT_LINES_H_

#include <array>
#include <cstddef>
#include <string_view>

#include "velmora/alignment/stod_punkt.h"
#include "velmora/platform/text_file.h"
#include "velmora/text/fixed_digits.h"

namespace velmora {

// Reads the three lines of the point at the start of `text` and returns their length. 0 when they are not
// plain or not whole: a name without letters beyond ASCII that is not a record's, a number of few digits, a
// line with anything in it. The six values are not set.
size_t ReadPlainSupportPoint(std::string_view text, stdpkttype* point);

// Writes the three lines of points as they are on disk. The last ones wait for Flush.
class SupportLineWriter {
 public:
  explicit SupportLineWriter(TextWriter* writer) : writer_(writer) {}
  // False, with nothing written, when the lines are not plain.
  bool Point(const stdpkttype& point);
  void Flush();

 private:
  static constexpr size_t kLongestPoint = 16 + 9 * (kLongestPlain + 2);

  TextWriter* writer_;
  std::array<char, size_t{68} << 10> block_;  // large enough to be written as it is
  size_t used_ = 0;
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_SUPPORT_LINES_H_
