// Lines of plain numbers straight from a file's bytes, many millions a second.
//
// A plain number is an optional "-", digits and, as a rule, a point with further digits. A line's shape is
// how many digits each column has before and after the point. The next line mostly has the same shape, so
// it is read as if it had, without looking for where its numbers end, and the result is then checked.
// Every other line is left to the general reader, which gives the same doubles.
#ifndef VELMORA_ALIGNMENT_NUMBER_LINES_H_
#define VELMORA_ALIGNMENT_NUMBER_LINES_H_

#include <array>
#include <cstddef>
#include <string_view>

#include "velmora/platform/vector_digits.h"

namespace velmora {

// How many digits a column's numbers have, with what follows from it.
struct NumberShape {
  int digits = 0;    // before the point, 1 to 7; 0: not known
  int decimals = 0;  // after it, up to 7; 0: without a point
  int length = 0;    // with the point, without a sign
  double divisor = 1;
  DigitPlaces places;
};

// Reads lines of three or four numbers with one blank between them.
class NumberLines {
 public:
  // `count` is 3 or 4. Without `wide` lanes only as every processor can.
  explicit NumberLines(int count, bool wide = HasWideLanes()) : count_(count), wide_(wide) {}

  // Reads the line at the start of `text` and returns its length with its line end, CR LF or LF. 0 when the
  // line is not plain or `text` does not hold all of it; `numbers` are then undefined. kSlack bytes after
  // `text` must be readable, the first one of no plain line.
  size_t Read(std::string_view text, std::array<double, 4>* numbers);

  // The longest plain line, so that nothing is read outside `text`.
  static constexpr size_t kSlack = 4 * 17 + 2;

 private:
  int count_;
  bool wide_;
  std::array<NumberShape, 4> shapes_;
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_NUMBER_LINES_H_
