#include "velmora/drawing/svg.h"

#include <cmath>

#include "velmora/text/codepage.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kLargestNumber = 1e7;     // mm; viewers keep coordinates in single precision
constexpr double kMiddleOfCapital = 0.36;  // of the font size, from the base line

bool IsUnwanted(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c <= 0x9F) || (c >= 0x202A && c <= 0x202E) ||
         (c >= 0x2066 && c <= 0x2069) || (c & 0xFFFE) == 0xFFFE;
}

}  // namespace

std::string SvgNumber(double value) {
  if (!std::isfinite(value)) return "0";
  std::string text = FormatFixed(std::fmin(std::fmax(value, -kLargestNumber), kLargestNumber), 3);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  return text == "-0" ? "0" : text;
}

std::string EscapeXml(std::string_view utf8) {
  std::string escaped;
  while (!utf8.empty()) {
    char32_t c = 0;
    const size_t length = DecodeUtf8Sequence(utf8, &c);
    utf8.remove_prefix(length == 0 ? 1 : length);
    if (length == 0 || IsUnwanted(c)) c = 0xFFFD;
    switch (c) {
      case U'&':
        escaped += "&amp;";
        break;
      case U'<':
        escaped += "&lt;";
        break;
      case U'>':
        escaped += "&gt;";
        break;
      case U'"':
        escaped += "&quot;";
        break;
      case U'\'':
        escaped += "&#39;";
        break;
      default:
        AppendUtf8(c, &escaped);
    }
  }
  return escaped;
}

void SvgPath::Point(char command, SheetPoint p) {
  data_ += command;
  data_ += SvgNumber(p.x) + " " + SvgNumber(p.y);
}

SvgPath& SvgPath::MoveTo(SheetPoint p) {
  Point('M', p);
  return *this;
}

SvgPath& SvgPath::LineTo(SheetPoint p) {
  Point('L', p);
  return *this;
}

SvgPath& SvgPath::ArcTo(double radius, bool large, bool clockwise, SheetPoint p) {
  const std::string r = SvgNumber(radius);
  data_ += "A" + r + " " + r + " 0 " + (large ? "1 " : "0 ") + (clockwise ? "1 " : "0 ");
  data_ += SvgNumber(p.x) + " " + SvgNumber(p.y);
  return *this;
}

SvgPath& SvgPath::Close() {
  data_ += 'Z';
  return *this;
}

Svg::Svg(double width, double height) {
  const std::string w = SvgNumber(width);
  const std::string h = SvgNumber(height);
  body_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
          w + "mm\" height=\"" + h + "mm\" viewBox=\"0 0 " + w + " " + h +
          "\" font-family=\"DejaVu Sans, Arial, sans-serif\">\n";
}

Svg::Group::Group(Svg& svg, std::string_view attributes) : svg_(svg) {
  svg_.body_ += "<g ";
  svg_.body_ += attributes;
  svg_.body_ += ">\n";
}

Svg::Group::~Group() { svg_.body_ += "</g>\n"; }

void Svg::Open(std::string_view tag) {
  body_ += '<';
  body_ += tag;
}

void Svg::Attribute(std::string_view name, double value) {
  body_ += ' ';
  body_ += name;
  body_ += "=\"" + SvgNumber(value) + "\"";
}

void Svg::Title(std::string_view utf8) { body_ += "<title>" + EscapeXml(utf8) + "</title>\n"; }

void Svg::Line(SheetPoint a, SheetPoint b) {
  Open("line");
  Attribute("x1", a.x);
  Attribute("y1", a.y);
  Attribute("x2", b.x);
  Attribute("y2", b.y);
  body_ += "/>\n";
}

void Svg::Polyline(std::span<const SheetPoint> points) {
  SvgPath path;
  for (const SheetPoint& p : points) path.IsEmpty() ? path.MoveTo(p) : path.LineTo(p);
  Path(path);
}

void Svg::Rectangle(double x, double y, double width, double height) {
  Open("rect");
  Attribute("x", x);
  Attribute("y", y);
  Attribute("width", width);
  Attribute("height", height);
  body_ += "/>\n";
}

void Svg::Circle(SheetPoint centre, double radius) {
  Open("circle");
  Attribute("cx", centre.x);
  Attribute("cy", centre.y);
  Attribute("r", radius);
  body_ += "/>\n";
}

void Svg::Path(const SvgPath& path) {
  if (!path.IsEmpty()) body_ += "<path d=\"" + path.Data() + "\"/>\n";
}

void Svg::Text(SheetPoint at, std::string_view utf8, const TextStyle& style) {
  Open("text");
  Attribute("x", at.x);
  Attribute("y", at.y + kMiddleOfCapital * style.size);
  Attribute("font-size", style.size);
  if (style.anchor == TextAnchor::kMiddle) body_ += " text-anchor=\"middle\"";
  if (style.anchor == TextAnchor::kEnd) body_ += " text-anchor=\"end\"";
  if (style.bold) body_ += " font-weight=\"bold\"";
  if (style.angle != 0) {
    body_ += " transform=\"rotate(" + SvgNumber(style.angle) + " " + SvgNumber(at.x) + " " + SvgNumber(at.y) +
             ")\"";
  }
  body_ += '>';
  body_ += EscapeXml(utf8);
  body_ += "</text>\n";
}

std::string Svg::Finish() {
  body_ += "</svg>\n";
  return std::move(body_);
}

}  // namespace velmora::drawing
