// Room for labels on the sheet: boxes that may be turned, and a greedy search for one that is free.
#ifndef VELMORA_DRAWING_LABELS_H_
#define VELMORA_DRAWING_LABELS_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/drawing/svg.h"

namespace velmora::drawing {

// How long text becomes, within a few per cent and rather too long than too short.
double TextWidth(std::string_view utf8, double size);
// The text, cut with "…" when it would be longer than `width`.
std::string FitText(std::string_view utf8, double size, double width);

struct Box {
  SheetPoint centre;
  double half_width;
  double half_height;
  double angle = 0;  // degrees, clockwise on the sheet
};

bool Overlap(const Box& a, const Box& b);
bool Contains(const Box& upright, const Box& inner);
// The box of text as Svg::Text places it, its middle at `centre`.
Box TextBox(SheetPoint centre, std::string_view utf8, double size, double angle = 0);
// A line as a box of this width.
Box LineBox(SheetPoint a, SheetPoint b, double width);
// The point of an upright box that is nearest to `from`.
SheetPoint NearestInBox(const Box& box, SheetPoint from);

// The angle, in degrees, at which text along this direction reads from the left or from below.
double ReadableAngle(double dx, double dy);

// What stands on a part of the sheet already.
class LabelRoom {
 public:
  explicit LabelRoom(const Box& area) : area_(area) {}

  // Nothing may cover a solid thing; a line to a label may cross one that is not solid.
  void AddSolid(const Box& box) { solid_.push_back(box); }
  void AddLine(const Box& box) { lines_.push_back(box); }

  // Whether a label fits: inside the area and on nothing.
  bool IsFree(const Box& label) const;
  // Whether a line to a label would stay off what is solid.
  bool IsOpen(const Box& line) const;
  const Box& Area() const { return area_; }

 private:
  Box area_;
  std::vector<Box> solid_;
  std::vector<Box> lines_;
};

struct PlacedLabel {
  Box box;
  // The line from the thing to its moved label.
  std::optional<std::pair<SheetPoint, SheetPoint>> leader;
};

// Finds room for an upright box of this size around the thing at `at` (a symbol of this radius),
// preferably in the direction (dx, dy), as near as can be, and takes it. Nothing when all is full.
std::optional<PlacedLabel> PlaceAround(LabelRoom& room, SheetPoint at, double radius, double width,
                                       double height, double dx, double dy);
// The first of the boxes that is free, taken.
std::optional<size_t> PlaceFirst(LabelRoom& room, std::span<const Box> candidates);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_LABELS_H_
