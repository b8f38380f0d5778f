// Labels: how much space text takes, and a greedy search for a place where it covers nothing.
#ifndef VELMORA_DRAWING_LABELS_H_
#define VELMORA_DRAWING_LABELS_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "velmora/drawing/canvas.h"

namespace velmora::drawing {

// The length of text, estimated to a few per cent, rather too long than too short.
double TextWidth(std::string_view utf8, double size);
// The text, shortened with "…" when it would be longer than `width`.
std::string FitText(std::string_view utf8, double size, double width);

struct RotatedBox {
  SheetPoint centre;
  double half_width;
  double half_height;
  double angle = 0;  // degrees, clockwise on the sheet
};

bool Overlap(const RotatedBox& a, const RotatedBox& b);
bool Contains(const SheetRect& area, const RotatedBox& box);
// The box of text that Canvas::Text writes with its middle at `centre`.
RotatedBox TextBox(SheetPoint centre, std::string_view utf8, double size, double angle = 0);
// A line as a box of this width.
RotatedBox LineBox(SheetPoint a, SheetPoint b, double width);

// The angle, in degrees, at which text along this direction reads from the left or from below.
double ReadableAngle(double dx, double dy);

// What labels in an area of the sheet must not cover.
class Obstacles {
 public:
  explicit Obstacles(const SheetRect& area) : area_(area) {}

  // A label covers neither a solid obstacle nor a line; its leader may cross a line.
  void AddSolid(const RotatedBox& box) { solid_.push_back(box); }
  void AddLine(const RotatedBox& box) { lines_.push_back(box); }

  bool AllowsLabel(const RotatedBox& label) const;
  bool AllowsLeader(const RotatedBox& leader) const;

 private:
  SheetRect area_;
  std::vector<RotatedBox> solid_;
  std::vector<RotatedBox> lines_;
};

struct PlacedLabel {
  SheetPoint centre;
  // From the symbol to a label that is not beside it.
  std::optional<std::pair<SheetPoint, SheetPoint>> leader;
};

// Finds a place for a label of this size, without rotation, around the symbol at `at`: as near as possible,
// and among the near places the one closest to `direction`. Adds label and leader to the obstacles. Nothing
// when every place is taken.
std::optional<PlacedLabel> PlaceAround(Obstacles& obstacles, SheetPoint at, double radius, double width,
                                       double height, SheetPoint direction);

// Writes the text into the first box that is free and adds that to the obstacles. Returns its index.
std::optional<size_t> WriteInFirst(Canvas& canvas, Obstacles& obstacles, std::span<const RotatedBox> boxes,
                                   std::string_view utf8, double size, const Style& style);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_LABELS_H_
