// Labels: how much space text takes, and a greedy search for a place where it covers nothing.
#ifndef VELMORA_DRAWING_LABELS_H_
#define VELMORA_DRAWING_LABELS_H_

#include <array>
#include <cstdint>
#include <functional>
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
// The text in at most so many lines of this width, broken at blanks where there are some; the last one is
// shortened with "…" when there is more.
std::vector<std::string> WrapText(std::string_view utf8, double size, double width, size_t most_lines);
// The text, shortened with "…" when it would be longer than `width`.
std::string FitText(std::string_view utf8, double size, double width);

struct RotatedBox {
  SheetPoint centre;
  double half_width;
  double half_height;
  double angle = 0;  // degrees, clockwise on the sheet
};

// A box with its sides' directions.
struct Sides {
  explicit Sides(const RotatedBox& box);
  // Of the box, along this unit vector.
  double HalfExtent(SheetPoint direction) const;

  SheetPoint centre;
  std::array<SheetPoint, 2> unit;
  std::array<double, 2> half;
};

bool Overlap(const Sides& a, const Sides& b);
inline bool Overlap(const RotatedBox& a, const RotatedBox& b) { return Overlap(Sides(a), Sides(b)); }
bool Contains(const SheetRect& area, const RotatedBox& box);
// The box of text that Canvas::Text writes with its middle at `centre`.
RotatedBox TextBox(SheetPoint centre, std::string_view utf8, double size, double angle = 0);
// A line as a box of this width.
RotatedBox LineBox(SheetPoint a, SheetPoint b, double width);

// The angle, in degrees, at which text along this direction reads from the left or from below.
double ReadableAngle(double dx, double dy);

// Where a label can be: its box and, unless it is beside its symbol, the leader from there.
struct LabelPlace {
  RotatedBox box;
  std::optional<std::pair<SheetPoint, SheetPoint>> leader = std::nullopt;
};

// What labels in an area of the sheet must not cover. Of a box that reaches over a large part of a
// vast area only a part counts, and where boxes crowd nothing is allowed, so that neither takes much time.
class Obstacles {
 public:
  explicit Obstacles(const SheetRect& area);

  // A label covers neither a solid obstacle nor a line; its leader may cross a line.
  void AddSolid(const RotatedBox& box) { Add(box, /*solid=*/true); }
  void AddLine(const RotatedBox& box) { Add(box, /*solid=*/false); }
  void Add(const LabelPlace& label);

  bool AllowsLabel(const RotatedBox& label) const;
  bool AllowsLeader(const RotatedBox& leader) const;
  bool Allows(const LabelPlace& label) const;

 private:
  struct Obstacle {
    Sides sides;
    bool solid;
  };

  void Add(const RotatedBox& box, bool solid);
  // Calls take(cell) with those that the box may reach into, until it returns true. Returns whether it did.
  template <class Take>
  bool AnyCell(const Sides& box, const Take& take) const;
  bool Covers(const RotatedBox& box, bool lines_too) const;

  SheetRect area_;
  double cell_;  // mm, the side of a cell
  size_t columns_;
  size_t rows_;
  std::vector<Obstacle> all_;
  std::vector<std::vector<std::uint32_t>> cells_;  // the obstacles in each, row by row
};

// The places for a label, the best first, by their number; nothing after the last.
using LabelPlaces = std::function<std::optional<LabelPlace>(size_t)>;
inline LabelPlaces NoPlaces() {
  return [](size_t) { return std::nullopt; };
}

// The places for a label of this size, without rotation, around the symbol at `at`: near ones first, and
// among the equally near those closest to `direction`.
LabelPlaces PlacesAround(SheetPoint at, double radius, double width, double height, SheetPoint direction);

// The first of the places that is free, added to the obstacles.
std::optional<LabelPlace> TakeFirst(Obstacles& obstacles, const LabelPlaces& places);

// Writes the text into the first box that is free and adds that to the obstacles. Returns its index.
std::optional<size_t> WriteInFirst(Canvas& canvas, Obstacles& obstacles, std::span<const RotatedBox> boxes,
                                   std::string_view utf8, double size, const Style& style);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_LABELS_H_
