// SVG text: elements with the few attributes that the drawing needs. Lengths are millimetres on the
// sheet, y downwards; numbers are written with at most three decimals, whatever the locale, and one that
// is not finite as 0.
#ifndef VELMORA_DRAWING_SVG_H_
#define VELMORA_DRAWING_SVG_H_

#include <span>
#include <string>
#include <string_view>

namespace velmora::drawing {

struct SheetPoint {
  double x;
  double y;
};

std::string SvgNumber(double value);
// Text that is safe between tags and in attributes, whatever bytes it came from: markup escaped; control
// characters, those that turn the writing direction and invalid UTF-8 as U+FFFD.
std::string EscapeXml(std::string_view utf8);

// The data of a path element, piece by piece.
class SvgPath {
 public:
  SvgPath& MoveTo(SheetPoint p);
  SvgPath& LineTo(SheetPoint p);
  // The circular arc on to `p`; `clockwise` as seen on the sheet, `large` for more than a half circle.
  SvgPath& ArcTo(double radius, bool large, bool clockwise, SheetPoint p);
  SvgPath& Close();
  bool IsEmpty() const { return data_.empty(); }
  const std::string& Data() const { return data_; }

 private:
  void Point(char command, SheetPoint p);
  std::string data_;
};

enum class TextAnchor { kStart, kMiddle, kEnd };

struct TextStyle {
  double size;  // mm
  TextAnchor anchor = TextAnchor::kMiddle;
  double angle = 0;  // degrees, clockwise on the sheet
  bool bold = false;
};

class Svg {
 public:
  Svg(double width, double height);

  // A group of elements that share attributes, open until the object goes.
  class Group {
   public:
    // `attributes` as they stand in the tag; from the program, never from a user.
    Group(Svg& svg, std::string_view attributes);
    ~Group();
    Group(const Group&) = delete;
    Group& operator=(const Group&) = delete;

   private:
    Svg& svg_;
  };

  void Title(std::string_view utf8);
  void Line(SheetPoint a, SheetPoint b);
  void Polyline(std::span<const SheetPoint> points);
  void Rectangle(double x, double y, double width, double height);
  void Circle(SheetPoint centre, double radius);
  void Path(const SvgPath& path);
  // `at` is the middle of the text's height, at the end or in the middle of its length as anchored.
  void Text(SheetPoint at, std::string_view utf8, const TextStyle& style);

  // The whole file. The object is empty afterwards.
  std::string Finish();

 private:
  void Open(std::string_view tag);
  void Attribute(std::string_view name, double value);

  std::string body_;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_SVG_H_
