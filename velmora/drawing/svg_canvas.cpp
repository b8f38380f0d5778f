#include "velmora/drawing/svg_canvas.h"

#include <cmath>
#include <initializer_list>
#include <utility>

#include "velmora/drawing/plain_text.h"
#include "velmora/drawing/scale.h"

namespace velmora::drawing {
namespace {

constexpr double kLargestNumber = 1e7;  // mm; viewers keep coordinates in single precision

std::string Number(double value) {
  if (!std::isfinite(value)) return "0";
  return TrimmedFixed(std::fmin(std::fmax(value, -kLargestNumber), kLargestNumber), 3);
}

std::string Pair(SheetPoint p) { return Number(p.x) + " " + Number(p.y); }

std::string Attributes(std::initializer_list<std::pair<const char*, double>> attributes) {
  std::string text;
  for (const auto& [name, value] : attributes) ((text += ' ') += name) += "=\"" + Number(value) + "\"";
  return text;
}

std::string Hex(Colour colour) {
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4) text += "0123456789abcdef"[colour >> shift & 0xF];
  return text;
}

// The arc from `a` on to `b`.
std::string ArcData(const PathPoint& a, SheetPoint b) {
  const double size = std::fabs(a.bulge);
  const double chord = std::hypot(b.x - a.at.x, b.y - a.at.y);
  const std::string radius = Number(chord * (1 + size * size) / (4 * size));
  return "A" + radius + " " + radius + " 0 " + (size > 1 ? "1 " : "0 ") + (a.bulge < 0 ? "1 " : "0 ") +
         Pair(b);
}

}  // namespace

void SvgCanvas::BeginSheet(std::string_view title, double width, double height) {
  EndSheet();
  const std::string w = Number(width);
  const std::string h = Number(height);
  text_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
          w + "mm\" height=\"" + h + "mm\" viewBox=\"0 0 " + w + " " + h +
          "\" font-family=\"DejaVu Sans, Arial, sans-serif\">\n<title>" + MarkupText(title) + "</title>\n";
  Rectangle({0, 0, width, height}, {.layer = "paper", .fill = 0xFFFFFF});
}

void SvgCanvas::Group(const Style& style) {
  if (group_ == style) return;
  CloseGroup();
  group_ = style;
  text_ += "<g class=\"";
  text_ += style.layer;
  text_ += "\" fill=\"" + (style.fill ? Hex(*style.fill) : "none") + "\"";
  if (style.line) {
    text_ += " stroke=\"" + Hex(*style.line) + "\" stroke-width=\"" + Number(style.width) + "\"";
    if (style.round) text_ += " stroke-linejoin=\"round\" stroke-linecap=\"round\"";
    if (style.dash[0] > 0)
      text_ += " stroke-dasharray=\"" + Number(style.dash[0]) + " " + Number(style.dash[1]) + "\"";
  }
  text_ += ">\n";
}

void SvgCanvas::CloseGroup() {
  if (group_) text_ += "</g>\n";
  group_.reset();
}

void SvgCanvas::Line(SheetPoint a, SheetPoint b, const Style& style) {
  Group(style);
  text_ += "<line" + Attributes({{"x1", a.x}, {"y1", a.y}, {"x2", b.x}, {"y2", b.y}}) + "/>\n";
}

void SvgCanvas::Rectangle(const SheetRect& r, const Style& style) {
  Group(style);
  text_ += "<rect" + Attributes({{"x", r.x}, {"y", r.y}, {"width", r.width}, {"height", r.height}}) + "/>\n";
}

void SvgCanvas::Circle(SheetPoint centre, double radius, const Style& style) {
  Group(style);
  text_ += "<circle" + Attributes({{"cx", centre.x}, {"cy", centre.y}, {"r", radius}}) + "/>\n";
}

void SvgCanvas::Path(std::span<const PathPoint> points, bool closed, const Style& style) {
  if (points.empty()) return;
  Group(style);
  text_ += "<path d=\"M" + Pair(points[0].at);
  const size_t last = points.size() - 1;
  for (size_t i = 0; i < (closed ? points.size() : last); ++i) {
    const SheetPoint to = points[i == last ? 0 : i + 1].at;
    if (points[i].bulge != 0) {
      text_ += ArcData(points[i], to);
    } else if (i < last) {
      text_ += "L" + Pair(to);
    }
  }
  text_ += closed ? "Z\"/>\n" : "\"/>\n";
}

// One path of round points takes a third of the bytes of as many circles.
void SvgCanvas::Dots(std::span<const SheetPoint> centres, double radius, const Style& style) {
  if (centres.empty()) return;
  Group({.layer = style.layer, .line = style.fill, .width = 2 * radius, .round = true});
  text_ += "<path d=\"";
  for (const SheetPoint& p : centres) text_ += "M" + Pair(p) + "Z";
  text_ += "\"/>\n";
}

void SvgCanvas::Text(SheetPoint at, std::string_view utf8, const TextFormat& format, const Style& style) {
  Group({.layer = style.layer, .fill = style.fill});
  text_ +=
      "<text" +
      Attributes({{"x", at.x}, {"y", at.y + kMiddleOfCapital * format.size}, {"font-size", format.size}});
  if (format.anchor == TextAnchor::kMiddle) text_ += " text-anchor=\"middle\"";
  if (format.anchor == TextAnchor::kEnd) text_ += " text-anchor=\"end\"";
  if (format.bold) text_ += " font-weight=\"bold\"";
  if (format.angle != 0) text_ += " transform=\"rotate(" + Number(format.angle) + " " + Pair(at) + ")\"";
  text_ += ">" + MarkupText(utf8) + "</text>\n";
}

void SvgCanvas::EndSheet() {
  CloseGroup();
  if (text_.empty()) return;
  finished_.push_back(std::move(text_) + "</svg>\n");
  text_.clear();
}

std::string SvgCanvas::Finish() {
  std::vector<std::string> sheets = FinishSheets();
  return sheets.empty() ? std::string() : std::move(sheets.front());
}

std::vector<std::string> SvgCanvas::FinishSheets() {
  EndSheet();
  return std::exchange(finished_, {});
}

}  // namespace velmora::drawing
