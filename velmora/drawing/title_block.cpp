#include "velmora/drawing/title_block.h"

#include <algorithm>
#include <array>

#include "velmora/drawing/scale.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kNameSize = 5.0;
constexpr double kFactSize = 2.6;
constexpr double kFactSpacing = 4.2;
constexpr double kInset = 4;
// Where the cells end, as parts of the width.
constexpr double kFactsEnd = 0.31;
constexpr double kNotesEnd = 0.55;
constexpr double kLegendEnd = 0.77;

void Lines(Svg& svg, double x, double y, double width, const std::vector<std::string>& texts) {
  Svg::Group group(svg, kText);
  for (const std::string& text : texts) {
    svg.Text({x, y}, FitText(text, kFactSize, width), {.size = kFactSize, .anchor = TextAnchor::kStart});
    y += kFactSpacing;
  }
}

void DrawLegend(Svg& svg, double x, double y, const TitleBlock& title) {
  constexpr double kSymbolWidth = 9;
  std::vector<std::string> texts = {"Road line"};
  {
    Svg::Group group(svg, kRoad);
    svg.Line({x, y}, {x + 6, y});
  }
  const auto circle = [&](int row, const char* attributes, double radius) {
    Svg::Group group(svg, attributes);
    svg.Circle({x + 3, y + row * kFactSpacing}, radius);
  };
  if (title.has_borings) {
    if (!title.dots) {
      circle(1, kBoring, kBoringRadius);
      circle(2, kStray, kBoringRadius);
    }
    circle(1, kBoringDot, kDotRadius);
    circle(2, kStrayDot, kDotRadius);
    texts.push_back(title.dots ? "Boring" : "Boring, with its offset in metres");
    texts.push_back("Boring without a place on the line");
  }
  Lines(svg, x + kSymbolWidth, y, 100, texts);
  if (title.has_borings && !title.dots) {
    Lines(svg, x, y + 3 * kFactSpacing, 100, {"H right, V left, towards higher stations"});
  }
}

// The longest round length that fits, in alternating parts.
void DrawScaleBar(Svg& svg, double x, double y, double width, double scale) {
  constexpr double kHeight = 1.4;
  const double length = NiceStepBelow(width * scale / 1000);
  const double on_sheet = length * 1000 / scale;
  const int parts = PartsOfStep(length);
  for (int i = 0; i < parts; ++i) {
    Svg::Group group(svg, i % 2 == 0 ? kInk : "fill=\"#fff\" stroke=\"#222\" stroke-width=\"0.18\"");
    svg.Rectangle(x + on_sheet * i / parts, y, on_sheet / parts, kHeight);
  }
  const bool km = length >= 5000;
  const auto number = [&](double metres) { return PlainNumber(km ? metres / 1000 : metres); };
  Svg::Group group(svg, kText);
  const double text_y = y + kHeight + 2.2;
  svg.Text({x, text_y}, "0", {.size = kFactSize});
  if (parts == 4) svg.Text({x + on_sheet / 2, text_y}, number(length / 2), {.size = kFactSize});
  svg.Text({x + on_sheet, text_y}, number(length) + (km ? " km" : " m"), {.size = kFactSize});
}

}  // namespace

void DrawTitleBlock(Svg& svg, const Panel& panel, const TitleBlock& title) {
  const double notes_x = panel.x + panel.width * kFactsEnd;
  const double legend_x = panel.x + panel.width * kNotesEnd;
  const double bar_x = panel.x + panel.width * kLegendEnd;
  {
    Svg::Group group(svg, kHairline);
    for (const double x : {notes_x, legend_x, bar_x}) svg.Line({x, panel.y}, {x, panel.Bottom()});
  }
  const double left = panel.x + kInset;
  const double first_line = panel.y + 12;
  const double first_row = panel.y + 5.5;
  {
    Svg::Group group(svg, kText);
    const double width = notes_x - left - kInset;
    svg.Text({left, panel.y + 6}, FitText(title.name, kNameSize * 1.12, width),
             {.size = kNameSize, .anchor = TextAnchor::kStart, .bold = true});
  }
  Lines(svg, left, first_line, notes_x - left - kInset, title.facts);
  Lines(svg, notes_x + kInset, first_row, legend_x - notes_x - 2 * kInset, title.notes);
  DrawLegend(svg, legend_x + kInset, first_row, title);
  if (title.plan_scale > 0) {
    Svg::Group group(svg, kText);
    svg.Text({bar_x + kInset, first_row}, "Scale of the plan " + ScaleText(title.plan_scale) + " (A3)",
             {.size = kFactSize, .anchor = TextAnchor::kStart});
    DrawScaleBar(svg, bar_x + kInset + 2, panel.y + 12, panel.Right() - bar_x - 2 * kInset - 12,
                 title.plan_scale);
  }
}

}  // namespace velmora::drawing
