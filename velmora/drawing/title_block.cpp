#include "velmora/drawing/title_block.h"

#include "velmora/drawing/labels.h"
#include "velmora/drawing/scale.h"
#include "velmora/drawing/style.h"
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

void Lines(Canvas& canvas, double x, double y, double width, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) {
    canvas.Text({x, y}, FitText(text, kFactSize, width), {.size = kFactSize, .anchor = TextAnchor::kStart},
                kText);
    y += kFactSpacing;
  }
}

void DrawLegend(Canvas& canvas, double x, double y, const TitleBlock& title) {
  constexpr double kSymbolWidth = 9;
  std::vector<std::string> texts = {"Road line"};
  canvas.Line({x, y}, {x + 6, y}, kRoad);
  if (title.has_borings) {
    const SheetPoint boring = {x + 3, y + kFactSpacing};
    const SheetPoint stray = {x + 3, y + 2 * kFactSpacing};
    if (!title.dots) {
      canvas.Circle(boring, kBoringRadius, kBoring);
      canvas.Circle(stray, kBoringRadius, kStray);
    }
    canvas.Circle(boring, kDotRadius, kBoringDot);
    canvas.Circle(stray, kDotRadius, kStrayDot);
    texts.push_back(title.dots ? "Boring" : "Boring, with its offset in metres");
    texts.push_back("Boring without a place on the line");
  }
  Lines(canvas, x + kSymbolWidth, y, 100, texts);
  if (title.has_borings && !title.dots)
    Lines(canvas, x, y + 3 * kFactSpacing, 100, {"H right, V left, towards higher stations"});
}

// The longest round length that fits, in alternating parts.
void DrawScaleBar(Canvas& canvas, double x, double y, double width, double scale) {
  constexpr double kHeight = 1.4;
  const double length = NiceStepBelow(width * scale / 1000);
  const double on_sheet = length * 1000 / scale;
  const int parts = PartsOfStep(length);
  for (int i = 0; i < parts; ++i) {
    canvas.Rectangle({x + on_sheet * i / parts, y, on_sheet / parts, kHeight},
                     i % 2 == 0 ? kScaleBarFilled : kScaleBarEmpty);
  }
  const bool km = length >= 5000;
  const auto number = [&](double metres) { return PlainNumber(km ? metres / 1000 : metres); };
  const double text_y = y + kHeight + 2.2;
  canvas.Text({x, text_y}, "0", {.size = kFactSize}, kText);
  if (parts == 4) canvas.Text({x + on_sheet / 2, text_y}, number(length / 2), {.size = kFactSize}, kText);
  canvas.Text({x + on_sheet, text_y}, number(length) + (km ? " km" : " m"), {.size = kFactSize}, kText);
}

}  // namespace

void DrawTitleBlock(Canvas& canvas, const SheetRect& panel, const TitleBlock& title) {
  const double notes_x = panel.x + panel.width * kFactsEnd;
  const double legend_x = panel.x + panel.width * kNotesEnd;
  const double bar_x = panel.x + panel.width * kLegendEnd;
  for (const double x : {notes_x, legend_x, bar_x}) canvas.Line({x, panel.y}, {x, panel.Bottom()}, kHairline);
  const double left = panel.x + kInset;
  const double first_line = panel.y + 12;
  const double first_row = panel.y + 5.5;
  const double facts_width = notes_x - left - kInset;
  canvas.Text({left, panel.y + 6}, FitText(title.name, kNameSize * 1.12, facts_width),
              {.size = kNameSize, .anchor = TextAnchor::kStart, .bold = true}, kText);
  Lines(canvas, left, first_line, facts_width, title.facts);
  Lines(canvas, notes_x + kInset, first_row, legend_x - notes_x - 2 * kInset, title.notes);
  DrawLegend(canvas, legend_x + kInset, first_row, title);
  if (title.plan_scale > 0) {
    Lines(canvas, bar_x + kInset, first_row, 100,
          {"Scale of the plan " + ScaleText(title.plan_scale) + " (A3)"});
    DrawScaleBar(canvas, bar_x + kInset + 2, panel.y + 12, panel.Right() - bar_x - 2 * kInset - 12,
                 title.plan_scale);
  }
}

}  // namespace velmora::drawing
