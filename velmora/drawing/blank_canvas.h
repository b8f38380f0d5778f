// A canvas without output: what is drawn on it shows only what will find room.
#ifndef VELMORA_DRAWING_BLANK_CANVAS_H_
#define VELMORA_DRAWING_BLANK_CANVAS_H_

#include "velmora/drawing/canvas.h"

namespace velmora::drawing {

struct BlankCanvas final : Canvas {
  void BeginSheet(std::string_view, double, double) override {}
  void Line(SheetPoint, SheetPoint, const Style&) override {}
  void Rectangle(const SheetRect&, const Style&) override {}
  void Circle(SheetPoint, double, const Style&) override {}
  void Path(std::span<const PathPoint>, bool, const Style&) override {}
  void Dots(std::span<const SheetPoint>, double, const Style&) override {}
  void Text(SheetPoint, std::string_view, const TextFormat&, const Style&) override {}
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_BLANK_CANVAS_H_
