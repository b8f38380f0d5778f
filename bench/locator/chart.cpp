#include "bench/locator/chart.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>

#include "velmora/drawing/scale.h"
#include "velmora/drawing/svg.h"

namespace velmora {
namespace {

using drawing::SheetPoint;
using drawing::Svg;
using drawing::TextAnchor;

constexpr double kWidth = 180;  // mm
constexpr double kHeight = 110;
constexpr double kLeft = 22;
constexpr double kRight = 130;
constexpr double kTop = 12;
constexpr double kBottom = 94;
constexpr const char* kColours[] = {"#1f5fa8", "#1f5fa8", "#c0392b", "#c0392b", "#3a8a3a", "#8a5fa8"};

struct Decades {
  double low = 1e9;
  double high = -1e9;

  void Include(const std::vector<double>& values) {
    for (const double value : values) {
      low = std::min(low, std::floor(std::log10(value)));
      high = std::max(high, std::ceil(std::log10(value)));
    }
  }
  double Place(double value, double from, double to) const {
    return from + (std::log10(value) - low) / std::max(high - low, 1.0) * (to - from);
  }
};

}  // namespace

std::string DrawChart(const std::string& title, const std::string& x_name, const std::string& y_name,
                      const std::vector<ChartLine>& lines) {
  Decades across;
  Decades up;
  for (const ChartLine& line : lines) {
    across.Include(line.x);
    up.Include(line.y);
  }
  Svg svg(kWidth, kHeight);
  {
    const Svg::Group ground(svg, "fill=\"#ffffff\" stroke=\"none\"");
    svg.Rectangle(0, 0, kWidth, kHeight);
  }
  auto all = std::make_unique<Svg::Group>(
      svg, "fill=\"none\" stroke=\"#999999\" stroke-width=\"0.2\" font-family=\"DejaVu Sans\"");
  const auto text = [&](SheetPoint at, const std::string& words, TextAnchor anchor, double angle = 0) {
    const Svg::Group group(svg, "fill=\"#222222\" stroke=\"none\"");
    svg.Text(at, words, {2.8, anchor, angle});
  };
  for (double decade = across.low; decade <= across.high; ++decade) {
    const double value = std::pow(10, decade);
    const double x = across.Place(value, kLeft, kRight);
    svg.Line({x, kTop}, {x, kBottom});
    text({x, kBottom + 4}, cli::plot::PlainNumber(value), TextAnchor::kMiddle);
  }
  for (double decade = up.low; decade <= up.high; ++decade) {
    const double value = std::pow(10, decade);
    const double y = up.Place(value, kBottom, kTop);
    svg.Line({kLeft, y}, {kRight, y});
    text({kLeft - 2, y}, cli::plot::PlainNumber(value), TextAnchor::kEnd);
  }
  text({(kLeft + kRight) / 2, kTop - 6}, title, TextAnchor::kMiddle);
  text({(kLeft + kRight) / 2, kBottom + 10}, x_name, TextAnchor::kMiddle);
  text({5, (kTop + kBottom) / 2}, y_name, TextAnchor::kMiddle, -90);

  for (size_t i = 0; i < lines.size(); ++i) {
    std::string style = "stroke-width=\"0.6\" stroke=\"";
    style += kColours[i % std::size(kColours)];
    style += i % 2 == 1 ? "\" stroke-dasharray=\"2 1\"" : "\"";
    const Svg::Group group(svg, style);
    std::vector<SheetPoint> points;
    for (size_t k = 0; k < lines[i].x.size(); ++k)
      points.push_back({across.Place(lines[i].x[k], kLeft, kRight), up.Place(lines[i].y[k], kBottom, kTop)});
    svg.Polyline(points);
    for (const SheetPoint& p : points) svg.Circle(p, 0.7);
    const double y = kTop + 6 * static_cast<double>(i) + 3;
    svg.Line({kRight + 4, y}, {kRight + 12, y});
    text({kRight + 14, y}, lines[i].name, TextAnchor::kStart);
  }
  all.reset();
  return svg.Finish();
}

}  // namespace velmora
