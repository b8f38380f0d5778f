#include "velmora/drawing/scale.h"

#include <cmath>
#include <initializer_list>

#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kLeastScale = 10;
constexpr double kScaleOfNothing = 100;
constexpr double kAlmost = 1e-9;  // of the number itself

// The largest power of ten not above `value`, which is above 0.
double PowerBelow(double value) { return std::pow(10.0, std::floor(std::log10(value) + kAlmost)); }

double SmallestFrom(double least, std::initializer_list<double> mantissas) {
  const double power = PowerBelow(least);
  for (const double mantissa : mantissas) {
    if (mantissa * power >= least * (1 - kAlmost)) return mantissa * power;
  }
  return 10 * power;
}

bool IsUsable(double value) { return std::isfinite(value) && value > 0; }

double ScaleFrom(double least, std::initializer_list<double> mantissas) {
  if (!IsUsable(least)) return kScaleOfNothing;
  return least < kLeastScale ? kLeastScale : SmallestFrom(least, mantissas);
}

}  // namespace

double NiceScale(double least) { return ScaleFrom(least, {1, 1.25, 1.5, 2, 2.5, 3, 4, 5, 6, 7.5}); }

double StandardScale(double least) { return ScaleFrom(least, {1, 2, 2.5, 4, 5}); }

double NiceStep(double least) { return IsUsable(least) ? SmallestFrom(least, {1, 2, 5}) : 1; }

double NiceStepBelow(double most) {
  if (!IsUsable(most)) return 1;
  const double power = PowerBelow(most);
  for (const double mantissa : {5.0, 2.0}) {
    if (mantissa * power <= most * (1 + kAlmost)) return mantissa * power;
  }
  return power;
}

int PartsOfStep(double step) {
  const double mantissa = step / PowerBelow(step);
  return std::fabs(mantissa - 2) < 0.5 ? 4 : 5;
}

std::vector<double> Ticks(const Interval& interval, double step) {
  std::vector<double> ticks;
  if (!IsUsable(step) || !std::isfinite(interval.low) || !std::isfinite(interval.high)) return ticks;
  const double first = std::ceil(interval.low / step - 1e-6);
  const double last = std::floor(interval.high / step + 1e-6);
  const double count = last - first + 1;
  constexpr double kLargestIndex = 1e15;  // beyond it adding 1 may change nothing
  if (!(count >= 1) || count > static_cast<double>(kMostTicks)) return ticks;
  if (std::fabs(first) > kLargestIndex || std::fabs(last) > kLargestIndex) return ticks;
  for (double i = first; i <= last; ++i) ticks.push_back(i * step + 0.0);  // no -0
  return ticks;
}

std::string TrimmedFixed(double value, int decimals) {
  std::string text = FormatFixed(value, decimals);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string PlainNumber(double value) {
  const double size = std::fabs(value);
  int decimals = size >= 1000 ? 0 : 3;
  for (double small = size; small > 0 && small < 1 && decimals < 12; small *= 10) ++decimals;
  return TrimmedFixed(value, decimals);
}

std::string ScaleText(double denominator) { return "1:" + PlainNumber(denominator); }

}  // namespace velmora::drawing
