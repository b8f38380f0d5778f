#include "velmora/drawing/legend.h"

#include <algorithm>

#include "velmora/drawing/boring_labels.h"
#include "velmora/drawing/labels.h"
#include "velmora/drawing/notes.h"
#include "velmora/drawing/style.h"

namespace velmora::drawing {
namespace {

constexpr double kInset = 4;  // mm
constexpr double kRow = 4.6;
constexpr double kSymbol = 9;  // its width

void Symbol(Canvas& canvas, const char* what, SheetPoint at) {
  const std::string_view symbol = what;
  const SheetPoint middle = {at.x + 3, at.y};
  if (symbol == "road") canvas.Line(at, {at.x + 6, at.y}, kRoad);
  if (symbol == "match") canvas.Line(at, {at.x + 6, at.y}, kMatchLine);
  if (symbol == "outline") canvas.Rectangle({at.x, at.y - 1.3, 6, 2.6}, kOutline);
  if (symbol == "stray") DrawStray(canvas, middle, false);
  if (symbol == "level") canvas.Line({middle.x - 1.3, at.y}, {middle.x + 1.3, at.y}, kBoringLevel);
  if (symbol == "number") canvas.Text(middle, BoringKey::NumberText(1), {.size = kSmallSize}, kBoringText);
  if (symbol == "boring") canvas.Circle(middle, kBoringRadius, kBoring);
  if (symbol == "boring") canvas.Circle(middle, kDotRadius, kBoringDot);
}

}  // namespace

void DrawLegend(Canvas& canvas, const ReportPlan& plan, const std::vector<std::string>& notes) {
  struct Item {
    const char* symbol;
    const char* text;
  };
  std::vector<Item> items;
  if (plan.HasPlan() || plan.HasProfile()) items.push_back({"road", "Road line"});
  if (!plan.strips.empty() && plan.HasPlan()) items.push_back({"outline", "Sheet with its number"});
  if (plan.strips.size() > 1)
    items.push_back({"match", "Match line of two sheets, step of the reference level"});
  if (!plan.report.road.borings.empty()) {
    items.push_back({"boring", "Boring with its offset, m: H right, V left, towards higher stations"});
    if (plan.HasProfile()) items.push_back({"level", "Level of a boring in the profile"});
    items.push_back({"number", "Boring by its number in the key of the sheet"});
    items.push_back({"stray", "Boring without a place along the road"});
  }
  const SheetRect& area = plan.layout.beside;
  const double width = area.width / 2 - kInset;
  double y = area.y + 4;
  for (const Item& item : items) {
    Symbol(canvas, item.symbol, {area.x + kInset, y});
    for (const std::string& line : WrapText(item.text, kSmallSize, width - kSymbol - 2, 2)) {
      canvas.Text({area.x + kInset + kSymbol, y}, line, {.size = kSmallSize, .anchor = TextAnchor::kStart},
                  kText);
      y += 2.9;
    }
    y += kRow - 2.9;
  }
  Notes lines(width);
  for (const std::string& note : notes) lines.Add(note, 3);
  lines.Draw(canvas, {area.x + area.width / 2 + 2, area.y + 2.4});
}

}  // namespace velmora::drawing
