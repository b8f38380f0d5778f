// A canvas that shows how many sheets are drawn.
#ifndef VELMORA_CLI_REPORT_PROGRESS_CANVAS_H_
#define VELMORA_CLI_REPORT_PROGRESS_CANVAS_H_

#include "cli/output/progress.h"
#include "velmora/drawing/canvas.h"

namespace velmora::cli {

class ProgressCanvas final : public drawing::Canvas {
 public:
  ProgressCanvas(drawing::Canvas& canvas, size_t sheets)
      : canvas_(canvas), progress_("Drawing", sheets, "sheet", 1) {}

  void BeginSheet(std::string_view title, double width, double height) override {
    progress_.Update(begun_, begun_);
    ++begun_;
    canvas_.BeginSheet(title, width, height);
  }
  void Line(drawing::SheetPoint a, drawing::SheetPoint b, const drawing::Style& style) override {
    canvas_.Line(a, b, style);
  }
  void Rectangle(const drawing::SheetRect& rectangle, const drawing::Style& style) override {
    canvas_.Rectangle(rectangle, style);
  }
  void Circle(drawing::SheetPoint centre, double radius, const drawing::Style& style) override {
    canvas_.Circle(centre, radius, style);
  }
  void Path(std::span<const drawing::PathPoint> points, bool closed, const drawing::Style& style) override {
    canvas_.Path(points, closed, style);
  }
  void Dots(std::span<const drawing::SheetPoint> centres, double radius,
            const drawing::Style& style) override {
    canvas_.Dots(centres, radius, style);
  }
  void Text(drawing::SheetPoint at, std::string_view utf8, const drawing::TextFormat& format,
            const drawing::Style& style) override {
    canvas_.Text(at, utf8, format, style);
  }

 private:
  drawing::Canvas& canvas_;
  Progress progress_;
  std::uint64_t begun_ = 0;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_REPORT_PROGRESS_CANVAS_H_
