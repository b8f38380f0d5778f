#include "cli/formats/drawing.h"

#include <algorithm>

#include "velmora/drawing/scale.h"
#include "velmora/drawing/style.h"
#include "velmora/drawing/svg.h"

namespace velmora::cli {
namespace {

using drawing::SheetPoint;
using drawing::Svg;

constexpr double kScale = 10;  // 1:10
constexpr double kMargin = 10;
constexpr double kGap = 12;
constexpr size_t kColumns = 3;
constexpr double kNameSize = 4;
constexpr double kTextSize = 2.6;
constexpr double kLineSpacing = 4.2;
constexpr double kCaption = 6 + 3 * kLineSpacing;  // below each format
constexpr double kNarrowest = 40;                  // of a column, for the caption

constexpr const char* kSheet = "fill=\"#fff\" stroke=\"#78828b\" stroke-width=\"0.25\"";
constexpr const char* kArea = "fill=\"#f3ece2\" stroke=\"#b32424\" stroke-width=\"0.18\"";

double Width(const ritformattype& format) { return std::max(format.arkBredd / kScale, kNarrowest); }
double Height(const ritformattype& format) { return format.arkHojd / kScale + kCaption; }

void DrawFormat(Svg& svg, double x, double y, const ritformattype& format) {
  struct Part {
    const char* name;
    const char* attributes;
    const char* text;
    double width;
    double height;
  };
  const Part parts[] = {{"sheet", kSheet, drawing::kGridText, format.arkBredd, format.arkHojd},
                        {"frame", drawing::kFrame, drawing::kText, format.ramBredd, format.ramHojd},
                        {"area", kArea, drawing::kRoadText, format.ytaBredd, format.ytaHojd}};
  const SheetPoint middle = {x + format.arkBredd / kScale / 2, y + format.arkHojd / kScale / 2};
  double line = y + format.arkHojd / kScale + 4.5;
  {
    Svg::Group group(svg, drawing::kText);
    svg.Text({x, line}, ToUtf8(format.namn),
             {.size = kNameSize, .anchor = drawing::TextAnchor::kStart, .bold = true});
  }
  line += 1;
  for (const Part& part : parts) {
    {
      Svg::Group group(svg, part.attributes);
      const double width = part.width / kScale;
      const double height = part.height / kScale;
      svg.Rectangle(middle.x - width / 2, middle.y - height / 2, width, height);
    }
    line += kLineSpacing;
    Svg::Group group(svg, part.text);
    svg.Text(
        {x, line},
        part.name + (" " + drawing::SvgNumber(part.width)) + " × " + drawing::SvgNumber(part.height) + " mm",
        {.size = kTextSize, .anchor = drawing::TextAnchor::kStart});
  }
}

}  // namespace

std::string DrawFormats(const std::vector<ritformattype>& formats) {
  const size_t columns = std::min(kColumns, formats.size());
  std::vector<double> widths(columns, 0);
  std::vector<double> heights((formats.size() + kColumns - 1) / kColumns, 0);
  for (size_t i = 0; i < formats.size(); ++i) {
    widths[i % kColumns] = std::max(widths[i % kColumns], Width(formats[i]));
    heights[i / kColumns] = std::max(heights[i / kColumns], Height(formats[i]));
  }
  const auto sum = [](const std::vector<double>& lengths) {
    double all = 2 * kMargin - kGap;
    for (const double length : lengths) all += length + kGap;
    return all;
  };
  const double sheet_width = sum(widths);
  const double sheet_height = sum(heights) + kLineSpacing;
  Svg svg(sheet_width, sheet_height);
  svg.Title("Drawing sheets");
  {
    Svg::Group paper(svg, "fill=\"#fff\"");
    svg.Rectangle(0, 0, sheet_width, sheet_height);
  }
  double y = kMargin;
  for (size_t row = 0; row < heights.size(); y += heights[row++] + kGap) {
    double x = kMargin;
    for (size_t column = 0; column < columns; x += widths[column++] + kGap) {
      const size_t at = row * kColumns + column;
      if (at < formats.size()) DrawFormat(svg, x, y, formats[at]);
    }
  }
  {
    Svg::Group group(svg, drawing::kGridText);
    svg.Text({sheet_width - kMargin, sheet_height - kMargin / 2}, drawing::ScaleText(kScale),
             {.size = kTextSize, .anchor = drawing::TextAnchor::kEnd});
  }
  return svg.Finish();
}

}  // namespace velmora::cli
