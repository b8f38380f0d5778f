#include "bench/locator/chart.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "velmora/drawing/scale.h"
#include "velmora/drawing/svg_canvas.h"

namespace velmora {
namespace {

using drawing::PathPoint;
using drawing::SheetPoint;
using drawing::Style;
using drawing::TextAnchor;

constexpr double kWidth = 180;  // mm
constexpr double kHeight = 110;
constexpr double kLeft = 22;
constexpr double kRight = 130;
constexpr double kTop = 12;
constexpr double kBottom = 94;
constexpr Style kAxis = {.layer = "axes", .line = 0x999999, .width = 0.2};
constexpr Style kText = {.layer = "axes", .fill = 0x222222};
constexpr drawing::Colour kColours[] = {0x1F5FA8, 0x1F5FA8, 0xC0392B, 0xC0392B, 0x3A8A3A, 0x8A5FA8};

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
  drawing::SvgCanvas canvas;
  canvas.BeginSheet(title, kWidth, kHeight);
  const auto text = [&](SheetPoint at, const std::string& words, TextAnchor anchor, double angle = 0) {
    canvas.Text(at, words, {2.8, anchor, angle}, kText);
  };
  for (double decade = across.low; decade <= across.high; ++decade) {
    const double value = std::pow(10, decade);
    const double x = across.Place(value, kLeft, kRight);
    canvas.Line({x, kTop}, {x, kBottom}, kAxis);
    text({x, kBottom + 4}, drawing::PlainNumber(value), TextAnchor::kMiddle);
  }
  for (double decade = up.low; decade <= up.high; ++decade) {
    const double value = std::pow(10, decade);
    const double y = up.Place(value, kBottom, kTop);
    canvas.Line({kLeft, y}, {kRight, y}, kAxis);
    text({kLeft - 2, y}, drawing::PlainNumber(value), TextAnchor::kEnd);
  }
  text({(kLeft + kRight) / 2, kTop - 6}, title, TextAnchor::kMiddle);
  text({(kLeft + kRight) / 2, kBottom + 10}, x_name, TextAnchor::kMiddle);
  text({5, (kTop + kBottom) / 2}, y_name, TextAnchor::kMiddle, -90);

  for (size_t i = 0; i < lines.size(); ++i) {
    Style style = {.layer = "lines", .line = kColours[i % std::size(kColours)], .width = 0.6};
    if (i % 2 == 1) style.dash = {2, 1};
    std::vector<PathPoint> points;
    for (size_t k = 0; k < lines[i].x.size(); ++k)
      points.push_back(
          {{across.Place(lines[i].x[k], kLeft, kRight), up.Place(lines[i].y[k], kBottom, kTop)}});
    canvas.Path(points, false, style);
    for (const PathPoint& p : points) canvas.Circle(p.at, 0.7, style);
    const double y = kTop + 6 * static_cast<double>(i) + 3;
    canvas.Line({kRight + 4, y}, {kRight + 12, y}, style);
    text({kRight + 14, y}, lines[i].name, TextAnchor::kStart);
  }
  return canvas.Finish();
}

}  // namespace velmora
