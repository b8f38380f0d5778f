// Round numbers for scales and axes.
#ifndef VELMORA_DRAWING_SCALE_H_
#define VELMORA_DRAWING_SCALE_H_

#include <string>
#include <vector>

namespace velmora::drawing {

// The smallest N of a usual scale 1:N that is not below `least`; never below 1:100.
double NiceScale(double least);

// The smallest of 1, 2, 5 times a power of ten that is not below `least`.
double NiceStep(double least);
// The largest that is not above `most`.
double NiceStepBelow(double most);

// Into how many parts a nice step divides evenly: 5 for 1 and 5, 4 for 2 times a power of ten.
int PartsOfStep(double step);

inline constexpr size_t kMostTicks = 2000;

// The multiples of `step` from `low` to `high`, both within a millionth of a step. No more than kMostTicks
// come back; none when that many would not do, or for a step that is none.
std::vector<double> Ticks(double low, double high, double step);

// A number without an exponent, as many decimals as it takes and at most three figures of them.
std::string PlainNumber(double value);
// "1:7500"
std::string ScaleText(double denominator);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_SCALE_H_
