// A sheet to draw on, whatever the format of the file that comes of it.
//
// Lengths are millimetres, x to the right and y downwards from the upper left corner. Directions of rotation
// are as seen on the sheet. Later elements cover earlier ones.
#ifndef VELMORA_DRAWING_CANVAS_H_
#define VELMORA_DRAWING_CANVAS_H_

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace velmora::drawing {

struct SheetPoint {
  double x;
  double y;
};

// Its sides are parallel to those of the sheet.
struct SheetRect {
  double x;
  double y;
  double width;
  double height;

  double Right() const { return x + width; }
  double Bottom() const { return y + height; }
  SheetRect Inset(double by) const { return {x + by, y + by, width - 2 * by, height - 2 * by}; }
  bool Contains(SheetPoint p) const { return p.x >= x && p.x <= Right() && p.y >= y && p.y <= Bottom(); }
};

using Colour = std::uint32_t;  // 0xRRGGBB

// How an element is drawn. Text is drawn in the fill colour.
struct Style {
  std::string_view layer;  // letters, digits and hyphens; a format may let its user hide a layer
  std::optional<Colour> fill = std::nullopt;
  std::optional<Colour> line = std::nullopt;
  double width = 0;              // of the line
  bool round = false;            // line ends and corners; else cut off and mitred
  std::array<double, 2> dash{};  // the lengths of a dash and of the gap after it; 0 for a solid line

  bool operator==(const Style&) const = default;
};

// From the base line of text to halfway up its capitals, as part of the font size.
inline constexpr double kMiddleOfCapital = 0.36;

enum class TextAnchor { kStart, kMiddle, kEnd };

struct TextFormat {
  double size;  // of the font
  TextAnchor anchor = TextAnchor::kMiddle;
  double angle = 0;  // degrees, clockwise
  bool bold = false;
};

// A corner of a path.
struct PathPoint {
  SheetPoint at;
  // Of the arc to the next corner: the tangent of a quarter of its angle, positive counter-clockwise; 0 for
  // a straight.
  double bulge = 0;
};

class Canvas {
 public:
  virtual ~Canvas() = default;

  // Called first, and before each further sheet of formats that hold several.
  virtual void BeginSheet(std::string_view title, double width, double height) = 0;

  virtual void Line(SheetPoint a, SheetPoint b, const Style& style) = 0;
  virtual void Rectangle(const SheetRect& rectangle, const Style& style) = 0;
  virtual void Circle(SheetPoint centre, double radius, const Style& style) = 0;
  virtual void Path(std::span<const PathPoint> points, bool closed, const Style& style) = 0;
  // A disc of this radius in the fill colour at each point; there may be tens of thousands.
  virtual void Dots(std::span<const SheetPoint> centres, double radius, const Style& style) = 0;
  // `at` is halfway up the capitals, at the start, middle or end of the text, which rotates around it. The
  // text is UTF-8, any bytes.
  virtual void Text(SheetPoint at, std::string_view utf8, const TextFormat& format, const Style& style) = 0;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_CANVAS_H_
