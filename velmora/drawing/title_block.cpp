#include "velmora/drawing/title_block.h"

#include <algorithm>

#include "velmora/drawing/boring_labels.h"
#include "velmora/drawing/labels.h"
#include "velmora/drawing/scale.h"
#include "velmora/drawing/style.h"

namespace velmora::drawing {
namespace {

constexpr double kNameSize = 5.0;
constexpr double kFactSize = 2.6;
constexpr double kFactSpacing = 4.2;
constexpr double kBlockInset = 4;
constexpr double kLeastBlockHeight = 24;
// Where the cells end, as parts of the width.
constexpr double kFactsEnd = 0.31;
constexpr double kNotesEnd = 0.55;
constexpr double kLegendEnd = 0.77;

// A name that is too long for one line takes several, in smaller letters.
struct NameLines {
  std::vector<std::string> lines;
  double size;
};
NameLines LinesOfName(const std::string& name, double width) {
  constexpr double kBold = 1.12;  // times as wide
  constexpr double kSmallerSize = 3.4;
  constexpr size_t kMostLines = 6;
  if (TextWidth(name, kNameSize * kBold) <= width) return {{name}, kNameSize};
  return {WrapText(name, kSmallerSize * kBold, width, kMostLines), kSmallerSize};
}

double FactsWidth(double panel_width) { return panel_width * kFactsEnd - 2 * kBlockInset; }

void Lines(Canvas& canvas, double x, double y, double width, const std::vector<std::string>& texts,
           double spacing = kFactSpacing) {
  for (const std::string& text : texts) {
    canvas.Text({x, y}, FitText(text, kFactSize, width), {.size = kFactSize, .anchor = TextAnchor::kStart},
                kText);
    y += spacing;
  }
}

// Of so many lines in a cell from `y` down.
double SpacingOf(size_t lines, double y, const SheetRect& panel) {
  constexpr double kLastLine = 2.6;  // mm above the panel's edge
  return lines < 2
             ? kFactSpacing
             : std::min(kFactSpacing, (panel.Bottom() - kLastLine - y) / static_cast<double>(lines - 1));
}

void DrawLegend(Canvas& canvas, const SheetRect& cell, const TitleBlock& title) {
  constexpr double kSymbolWidth = 9;
  const double x = cell.x;
  std::vector<std::string> texts = {"Road line"};
  if (title.has_borings) texts.push_back(title.dots ? "Boring" : "Boring, with its offset in metres");
  if (title.has_strays) texts.emplace_back("Boring without a place along the road");
  if (title.has_key) texts.emplace_back("Boring by its number in the key below");
  std::vector<std::string> notes;
  if (title.has_borings && (!title.dots || title.has_key))
    notes.emplace_back("H right, V left, towards higher stations");
  std::string unlabelled;
  if (title.unlabelled_in_plan > 0) unlabelled = std::to_string(title.unlabelled_in_plan) + " in the plan";
  if (title.unlabelled_in_profile > 0)
    unlabelled +=
        (unlabelled.empty() ? "" : ", ") + std::to_string(title.unlabelled_in_profile) + " in the profile";
  if (!unlabelled.empty()) notes.push_back("Not labelled: " + unlabelled);
  double y = cell.y;
  const double spacing = SpacingOf(texts.size() + notes.size(), y, cell);
  Lines(canvas, x + kSymbolWidth, y, cell.width - kSymbolWidth, texts, spacing);
  Lines(canvas, x, y + spacing * static_cast<double>(texts.size()), cell.width, notes, spacing);

  canvas.Line({x, y}, {x + 6, y}, kRoad);
  const double middle = x + 3;
  if (title.has_borings) {
    y += spacing;
    if (!title.dots) canvas.Circle({middle, y}, kBoringRadius, kBoring);
    canvas.Circle({middle, y}, kDotRadius, kBoringDot);
  }
  if (title.has_strays) {
    y += spacing;
    DrawStray(canvas, {middle, y}, title.dots);
  }
  if (title.has_key)
    canvas.Text({middle, y + spacing}, BoringKey::NumberText(1), {.size = kSmallSize}, kBoringText);
}

}  // namespace

void DrawScaleBar(Canvas& canvas, SheetPoint at, double width, double scale) {
  const auto [x, y] = at;
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

double TitleBlockHeight(const TitleBlock& title, double width) {
  const size_t lines = LinesOfName(title.name, FactsWidth(width)).lines.size();
  return kLeastBlockHeight + static_cast<double>(lines - 1) * kFactSpacing;
}

void DrawTitleBlock(Canvas& canvas, const SheetRect& panel, const TitleBlock& title) {
  const double notes_x = panel.x + panel.width * kFactsEnd;
  const double legend_x = panel.x + panel.width * kNotesEnd;
  const double bar_x = panel.x + panel.width * kLegendEnd;
  for (const double x : {notes_x, legend_x, bar_x}) canvas.Line({x, panel.y}, {x, panel.Bottom()}, kHairline);
  const double left = panel.x + kBlockInset;
  const double first_row = panel.y + 5.5;
  const NameLines name = LinesOfName(title.name, FactsWidth(panel.width));
  double y = panel.y + 6;
  for (const std::string& line : name.lines) {
    canvas.Text({left, y}, line, {.size = name.size, .anchor = TextAnchor::kStart, .bold = true}, kText);
    y += kFactSpacing;
  }
  Lines(canvas, left, y - kFactSpacing + 6, FactsWidth(panel.width), title.facts);
  Lines(canvas, notes_x + kBlockInset, first_row, legend_x - notes_x - 2 * kBlockInset, title.notes,
        SpacingOf(title.notes.size(), first_row, panel));
  DrawLegend(
      canvas,
      {legend_x + kBlockInset, first_row, bar_x - legend_x - 2 * kBlockInset, panel.Bottom() - first_row},
      title);
  if (title.plan_scale > 0) {
    Lines(canvas, bar_x + kBlockInset, first_row, 100,
          {"Scale of the plan " + ScaleText(title.plan_scale) + " (" + title.sheet + ")"});
    DrawScaleBar(canvas, {bar_x + kBlockInset + 2, panel.y + 12},
                 panel.Right() - bar_x - 2 * kBlockInset - 12, title.plan_scale);
  }
}

}  // namespace velmora::drawing
