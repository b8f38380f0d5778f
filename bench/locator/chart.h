// Growth drawn on two logarithmic axes, as SVG.
#ifndef VELMORA_BENCH_LOCATOR_CHART_H_
#define VELMORA_BENCH_LOCATOR_CHART_H_

#include <string>
#include <vector>

namespace velmora {

struct ChartLine {
  std::string name;
  std::vector<double> x;
  std::vector<double> y;
};

std::string DrawChart(const std::string& title, const std::string& x_name, const std::string& y_name,
                      const std::vector<ChartLine>& lines);

}  // namespace velmora

#endif  // VELMORA_BENCH_LOCATOR_CHART_H_
