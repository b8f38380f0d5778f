#include "velmora/drawing/format_sheet.h"

#include <algorithm>
#include <string>
#include <vector>

#include "velmora/drawing/scale.h"
#include "velmora/drawing/style.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kScale = 10;  // 1:10
constexpr double kSheetMargin = 10;
constexpr double kSheetGap = 12;
constexpr size_t kColumns = 3;
constexpr double kFormatNameSize = 4;
constexpr double kTextSize = 2.6;
constexpr double kMeasureSpacing = 4.2;
constexpr double kCaption = 6 + 3 * kMeasureSpacing;  // below each format
constexpr double kNarrowest = 40;                     // of a column, for the caption

constexpr Colour kSheetGrey = 0x78828B;
constexpr Style kSheet = {.layer = "sheet", .fill = kWhite, .line = kSheetGrey, .width = 0.25};
constexpr Style kArea = {.layer = "area", .fill = 0xF3ECE2, .line = kRed, .width = 0.18};

double Width(const ritformattype& format) { return std::max(format.arkBredd / kScale, kNarrowest); }
double Height(const ritformattype& format) { return format.arkHojd / kScale + kCaption; }

void DrawFormat(Canvas& canvas, double x, double y, const ritformattype& format) {
  const struct {
    const Style& style;
    Colour text;
    double width;
    double height;
  } kParts[] = {{kSheet, kSheetGrey, format.arkBredd, format.arkHojd},
                {kFrame, kBlack, format.ramBredd, format.ramHojd},
                {kArea, kRed, format.ytaBredd, format.ytaHojd}};
  const SheetPoint middle = {x + format.arkBredd / kScale / 2, y + format.arkHojd / kScale / 2};
  double line = y + format.arkHojd / kScale + 4.5;
  canvas.Text({x, line}, ToUtf8(format.namn),
              {.size = kFormatNameSize, .anchor = TextAnchor::kStart, .bold = true}, kText);
  line += 1;
  for (const auto& part : kParts) {
    const double width = part.width / kScale;
    const double height = part.height / kScale;
    canvas.Rectangle({middle.x - width / 2, middle.y - height / 2, width, height}, part.style);
    line += kMeasureSpacing;
    canvas.Text({x, line},
                std::string(part.style.layer) + " " + FormatShortest(part.width) + " × " +
                    FormatShortest(part.height) + " mm",
                {.size = kTextSize, .anchor = TextAnchor::kStart},
                {.layer = part.style.layer, .fill = part.text});
  }
}

}  // namespace

void DrawFormats(std::span<const ritformattype> formats, Canvas& canvas) {
  const size_t columns = std::min(kColumns, formats.size());
  std::vector<double> widths(columns, 0);
  std::vector<double> heights((formats.size() + kColumns - 1) / kColumns, 0);
  for (size_t i = 0; i < formats.size(); ++i) {
    widths[i % kColumns] = std::max(widths[i % kColumns], Width(formats[i]));
    heights[i / kColumns] = std::max(heights[i / kColumns], Height(formats[i]));
  }
  const auto sum = [](const std::vector<double>& lengths) {
    double all = 2 * kSheetMargin - kSheetGap;
    for (const double length : lengths) all += length + kSheetGap;
    return all;
  };
  const double sheet_width = sum(widths);
  const double sheet_height = sum(heights) + kMeasureSpacing;
  canvas.BeginSheet("Drawing sheets", sheet_width, sheet_height);
  double y = kSheetMargin;
  for (size_t row = 0; row < heights.size(); y += heights[row++] + kSheetGap) {
    double x = kSheetMargin;
    for (size_t column = 0; column < columns; x += widths[column++] + kSheetGap) {
      const size_t at = row * kColumns + column;
      if (at < formats.size()) DrawFormat(canvas, x, y, formats[at]);
    }
  }
  canvas.Text({sheet_width - kSheetMargin, sheet_height - kSheetMargin / 2}, ScaleText(kScale),
              {.size = kTextSize, .anchor = TextAnchor::kEnd}, {.layer = "sheet", .fill = kSheetGrey});
}

}  // namespace velmora::drawing
