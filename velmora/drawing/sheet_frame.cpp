#include "velmora/drawing/sheet_frame.h"

#include <algorithm>
#include <cmath>

#include "velmora/drawing/labels.h"
#include "velmora/drawing/scale.h"
#include "velmora/drawing/style.h"
#include "velmora/drawing/title_block.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kFrameInset = 2.5;  // mm
constexpr double kSmallCells = 13;   // mm, the height of the lower row
constexpr double kScaleCell = 128;   // where the cell of the scales begins

std::string NumberOf(const SheetTitle& title) {
  return std::to_string(title.number) + " (" + std::to_string(title.sheets) + ")";
}

void DrawStamp(Canvas& canvas, const SheetRect& block, const std::vector<StampField>& fields,
               const SheetTitle& title) {
  // L and H are the lengths and the heights, as in the names of the settings.
  std::string scale = title.scale > 0 ? ScaleText(title.scale) : "";
  if (title.height_scale > 0) scale = "L " + scale + ", H " + ScaleText(title.height_scale);
  for (const StampField& field : fields) {
    const std::string text = field.is_sheet_number ? NumberOf(title) : field.is_scale ? scale : field.text;
    if (!IsInTitleBlock(field)) continue;
    canvas.Text({block.x + field.x, block.Bottom() - field.y - kMiddleOfCapital * field.size},
                FitText(text, field.size, block.width - field.x - 0.5),
                {.size = field.size, .anchor = TextAnchor::kStart}, kTitleText);
  }
}

// A heading in small letters, and the text below it.
void DrawCell(Canvas& canvas, const SheetRect& cell, const char* heading, const std::string& text) {
  constexpr double kSize = 2.8;
  canvas.Text({cell.x + kFrameInset, cell.y + 2.6}, heading, {.size = 1.8, .anchor = TextAnchor::kStart},
              kTitleLabel);
  canvas.Text({cell.x + kFrameInset, cell.y + 8}, FitText(text, kSize, cell.width - 2 * kFrameInset),
              {.size = kSize, .anchor = TextAnchor::kStart}, kTitleText);
}

void DrawDefaultBlock(Canvas& canvas, const SheetRect& block, const Report& report, const SheetTitle& title) {
  constexpr double kNameSize = 5;
  constexpr double kBold = 1.12;  // times as wide
  const double row = block.Bottom() - kSmallCells;
  const double scales = block.x + kScaleCell;
  const double width = kScaleCell - 2 * kFrameInset;
  const TextFormat line = {.size = 2.8, .anchor = TextAnchor::kStart};
  const std::string name = report.road.name.empty() ? "Road without a name" : report.road.name;
  double y = block.y + 6.5;
  const bool one_line = TextWidth(name, kNameSize * kBold) <= width;
  const double size = one_line ? kNameSize : 3.4;
  for (const std::string& text : WrapText(name, size * kBold, width, 3)) {
    canvas.Text({block.x + kFrameInset, y}, text, {.size = size, .anchor = TextAnchor::kStart, .bold = true},
                kTitleText);
    y += one_line ? 7 : 4.6;
  }
  for (const std::string& text : WrapText(title.content, line.size, width, 2)) {
    canvas.Text({block.x + kFrameInset, y + 1}, text, line, kTitleText);
    y += 4.4;
  }
  canvas.Line({block.x, row}, {block.Right(), row}, kTitleThin);
  canvas.Line({scales, block.y}, {scales, row}, kTitleThin);
  canvas.Text({scales + kFrameInset, block.y + 2.6}, "Scale", {.size = 1.8, .anchor = TextAnchor::kStart},
              kTitleLabel);
  y = block.y + 8;
  const auto scale = [&](const char* what, double value) {
    if (!(value > 0)) return;
    canvas.Text({scales + kFrameInset, y}, what + ScaleText(value), line, kTitleText);
    y += 5;
  };
  scale(title.height_scale > 0 ? "Plan and lengths " : "Plan ", title.scale);
  scale("Heights ", title.height_scale);
  if (report.setup.format.namn != nullptr)
    canvas.Text({scales + kFrameInset, y}, "Format " + ToUtf8(report.setup.format.namn), line, kTitleText);
  if (title.scale > 0)
    DrawScaleBar(canvas, {scales + kFrameInset + 2, row - 7.5}, block.width - kScaleCell - 14, title.scale);

  const struct {
    const char* heading;
    std::string text;
    double width;
  } kCells[] = {{"Date", report.date, 26},
                {"Author", report.author, 48},
                {"File", report.road.file, 79},
                {"Sheet", NumberOf(title), 30}};
  double x = block.x;
  for (const auto& cell : kCells) {
    if (x > block.x) canvas.Line({x, row}, {x, block.Bottom()}, kTitleThin);
    DrawCell(canvas, {x, row, cell.width, kSmallCells}, cell.heading, cell.text);
    x += cell.width;
  }
}

}  // namespace

bool IsInTitleBlock(const StampField& field) {
  return field.x >= 0 && field.x <= kTitleWidth && field.y >= 0 && field.y <= kTitleHeight &&
         field.size > 0 && field.size <= kLargestStampText;
}

void BeginFramedSheet(Canvas& canvas, const SheetLayout& layout, const Report& report,
                      const SheetTitle& title) {
  canvas.BeginSheet("Sheet " + NumberOf(title) + ": " + title.content, layout.width, layout.height);
  canvas.Rectangle(layout.frame, kFrame);
  canvas.Line({layout.title.x, layout.title.y}, {layout.title.Right(), layout.title.y}, kTitleLine);
  canvas.Line({layout.title.x, layout.title.y}, {layout.title.x, layout.title.Bottom()}, kTitleLine);
  if (report.stamp.empty())
    DrawDefaultBlock(canvas, layout.title, report, title);
  else
    DrawStamp(canvas, layout.title, report.stamp, title);
}

}  // namespace velmora::drawing
