// A drawing as SVG text.
#ifndef VELMORA_DRAWING_SVG_CANVAS_H_
#define VELMORA_DRAWING_SVG_CANVAS_H_

#include <string>
#include <vector>

#include "velmora/drawing/canvas.h"

namespace velmora::drawing {

// Elements that follow one another in the same style share a group, whose class is the layer. Numbers have at
// most three decimals; a number that is not finite is written as 0. Text is escaped; control characters,
// those that change the writing direction and invalid UTF-8 become U+FFFD.
class SvgCanvas final : public Canvas {
 public:
  void BeginSheet(std::string_view title, double width, double height) override;
  void Line(SheetPoint a, SheetPoint b, const Style& style) override;
  void Rectangle(const SheetRect& rectangle, const Style& style) override;
  void Circle(SheetPoint centre, double radius, const Style& style) override;
  void Path(std::span<const PathPoint> points, bool closed, const Style& style) override;
  void Dots(std::span<const SheetPoint> centres, double radius, const Style& style) override;
  void Text(SheetPoint at, std::string_view utf8, const TextFormat& format, const Style& style) override;

  // The whole file of the only sheet. The canvas is empty afterwards.
  std::string Finish();
  // A file for each of the sheets. The canvas is empty afterwards.
  std::vector<std::string> FinishSheets();

 private:
  void EndSheet();
  // Opens a group of this style unless it is open.
  void Group(const Style& style);
  void CloseGroup();

  std::vector<std::string> finished_;
  std::string text_;  // of the sheet that was begun last
  std::optional<Style> group_;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_SVG_CANVAS_H_
