// Intervals, and round numbers for scales and axes.
#ifndef VELMORA_DRAWING_SCALE_H_
#define VELMORA_DRAWING_SCALE_H_

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace velmora::drawing {

// Empty until something is added.
struct Interval {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  void Add(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
  bool Contains(double value) const { return value >= low && value <= high; }
  double Size() const { return high >= low ? high - low : 0; }
  double Middle() const { return high >= low ? (low + high) / 2 : 0; }
  Interval WidenedBy(double by) const { return {low - by, high + by}; }
};

// The smallest N of a usual scale 1:N that is not below `least`; never below 10, and 100 for no extent.
double NiceScale(double least);

// The same of the scales that drawings are made in: 1, 2, 2.5, 4, 5 times a power of ten.
double StandardScale(double least);

// The smallest of 1, 2, 5 times a power of ten that is not below `least`.
double NiceStep(double least);
// The largest that is not above `most`.
double NiceStepBelow(double most);

// The number of even parts of a nice step: 4 for 2 times a power of ten, else 5.
int PartsOfStep(double step);

inline constexpr size_t kMostTicks = 2000;

// The multiples of `step` within the interval, its ends widened by a millionth of a step. Empty when there
// are more than kMostTicks, or for a step that is not positive.
std::vector<double> Ticks(const Interval& interval, double step);

// The number with at most so many decimals, without trailing zeros.
std::string TrimmedFixed(double value, int decimals);
// Without an exponent: from 1000 as an integer, else with three decimals, below 1 three significant ones.
std::string PlainNumber(double value);
// "1:7500"
std::string ScaleText(double denominator);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_SCALE_H_
