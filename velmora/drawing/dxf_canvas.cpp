#include "velmora/drawing/dxf_canvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "velmora/drawing/plain_text.h"
#include "velmora/exchange/dxf_text.h"
#include "velmora/text/codepage.h"

namespace velmora::drawing {
namespace {

constexpr double kFarthest = 1e7;          // mm
constexpr double kBetweenSheets = 20;      // mm between sheets
constexpr double kHeightOfCapital = 0.72;  // of the font size
constexpr Colour kPaper = 0xFFFFFF;
constexpr size_t kMostCharacters = 255;
constexpr std::string_view kSheetLayer = "PAPER";

double Limited(double value) { return std::isfinite(value) ? std::clamp(value, -kFarthest, kFarthest) : 0; }

std::string LayerName(std::string_view layer) {
  std::string name(layer);
  for (char& c : name)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return name;
}

// The nearest of the line widths that DXF knows, in hundredths of a millimetre.
int LineWidth(double millimetres) {
  constexpr std::array<int, 24> kWidths = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                                           53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
  const double wanted = Limited(millimetres) * 100;
  return *std::min_element(kWidths.begin(), kWidths.end(),
                           [&](int a, int b) { return std::fabs(a - wanted) < std::fabs(b - wanted); });
}

// The bytes of a text. A caret and two percent signs would begin a code.
std::string TextBytes(std::string_view utf8) {
  const std::string plain = PlainText(utf8);
  const bool codes = plain.find("%%") != std::string::npos;
  std::string text;
  size_t characters = 0;
  for (std::string_view rest = plain; !rest.empty() && characters < kMostCharacters; ++characters) {
    char32_t c = 0;
    rest.remove_prefix(DecodeUtf8Sequence(rest, &c));
    if (c == U'^') {
      text += "^ ";
    } else if (c == U'%' && codes) {
      text += "%%%";
    } else {
      AppendUtf8(c > 0xFFFF ? 0xFFFD : c, &text);
    }
  }
  return exchange::EncodeDxfText(text).value_or(std::string());
}

bool IsFilled(const Style& style) { return style.fill && *style.fill != kPaper; }

}  // namespace

DxfCanvas::DxfCanvas(const MapPosition& position) : position_(position) { contents_.metres = true; }

SheetPoint DxfCanvas::InDrawing(SheetPoint p) const {
  return {position_.west + Limited(p.x) * position_.metres,
          position_.north - Limited(p.y) * position_.metres};
}

double DxfCanvas::Length(double millimetres) const { return Limited(millimetres) * position_.metres; }

SheetPoint DxfCanvas::Include(SheetPoint p) {
  const SheetPoint drawn = InDrawing(p);
  contents_.x.Add(drawn.x);
  contents_.y.Add(drawn.y);
  return drawn;
}

DxfGroupText& DxfCanvas::Entity(std::string_view type, std::string_view layer, Colour colour) {
  const std::string name = LayerName(layer);
  auto& layers = contents_.layers;
  auto known = std::find_if(layers.begin(), layers.end(), [&](const DxfLayer& l) { return l.name == name; });
  if (known == layers.end()) known = layers.insert(known, {name, colour});
  entities_.Text(0, type).Handle(5, contents_.next_handle++).Handle(330, kDxfModelSpace);
  entities_.Text(100, "AcDbEntity").Text(8, name);
  if (known->colour != colour) AddDxfColour(colour, &entities_);
  return entities_;
}

void DxfCanvas::AddLine(const Style& style) {
  if (style.dash[0] > 0) {
    const std::array<double, 2> dash = {Length(style.dash[0]), Length(style.dash[1])};
    auto& dashes = contents_.dashes;
    auto known = std::find(dashes.begin(), dashes.end(), dash);
    if (known == dashes.end()) known = dashes.insert(known, dash);
    entities_.Text(6, DxfDashName(static_cast<size_t>(known - dashes.begin())));
  }
  entities_.Integer(370, LineWidth(style.width));
}

void DxfCanvas::BeginSheet(std::string_view, double width, double height) {
  if (contents_.metres) return;
  position_ = {next_x_, height, 1};
  next_x_ += width + kBetweenSheets;
  Rectangle({0, 0, width, height}, {.layer = kSheetLayer, .line = 0x808080, .width = 0.13});
  contents_.views.push_back(
      {"SHEET-" + std::to_string(contents_.views.size() + 1), {position_.west, 0, width, height}});
}

void DxfCanvas::Line(SheetPoint a, SheetPoint b, const Style& style) {
  if (!style.line) return;
  Entity("LINE", style.layer, *style.line);
  AddLine(style);
  const SheetPoint from = Include(a);
  const SheetPoint to = Include(b);
  entities_.Text(100, "AcDbLine").At(10, from.x, from.y).Integer(30, 0).At(11, to.x, to.y).Integer(31, 0);
}

void DxfCanvas::Rectangle(const SheetRect& r, const Style& style) {
  const std::array<PathPoint, 4> corners = {
      {{{r.x, r.y}}, {{r.Right(), r.y}}, {{r.Right(), r.Bottom()}}, {{r.x, r.Bottom()}}}};
  Path(corners, true, style);
}

// A ring of two half circles, as wide as its radius: the disc that programs fill since the first ones.
void DxfCanvas::Disc(SheetPoint centre, double radius, const Style& style) {
  Entity("LWPOLYLINE", style.layer, *style.fill).Integer(370, 0);
  entities_.Text(100, "AcDbPolyline").Integer(90, 2).Integer(70, 1).Real(43, Length(radius));
  const std::array<PathPoint, 2> ring = {
      {{{centre.x - radius / 2, centre.y}, 1}, {{centre.x + radius / 2, centre.y}, 1}}};
  Vertices(ring);
}

void DxfCanvas::Circle(SheetPoint centre, double radius, const Style& style) {
  if (!(radius > 0)) return;
  if (IsFilled(style)) Disc(centre, radius, style);
  if (!style.line) return;
  Entity("CIRCLE", style.layer, *style.line);
  AddLine(style);
  const SheetPoint at = Include(centre);
  entities_.Text(100, "AcDbCircle").At(10, at.x, at.y).Integer(30, 0).Real(40, Length(radius));
}

void DxfCanvas::Vertices(std::span<const PathPoint> points) {
  for (const PathPoint& point : points) {
    const SheetPoint at = Include(point.at);
    entities_.At(10, at.x, at.y);
    if (point.bulge != 0) entities_.Real(42, Limited(point.bulge), 10);
  }
}

void DxfCanvas::Path(std::span<const PathPoint> points, bool closed, const Style& style) {
  if (points.size() < 2) return;
  const auto count = static_cast<long long>(points.size());
  if (IsFilled(style)) {
    Entity("HATCH", style.layer, *style.fill);
    entities_.Lines(
        "100 AcDbHatch\n10 0\n20 0\n30 0\n210 0\n220 0\n230 1\n2 SOLID\n70 1\n71 0\n91 1\n92 3\n");
    entities_.Integer(72, 1).Integer(73, 1).Integer(93, count);
    for (const PathPoint& point : points) {
      const SheetPoint at = Include(point.at);
      entities_.At(10, at.x, at.y).Real(42, Limited(point.bulge), 10);
    }
    entities_.Lines("97 0\n75 0\n76 1\n98 0\n");
  }
  if (!style.line) return;
  constexpr int kClosed = 1;
  constexpr int kDashesGoOn = 128;  // over the corners
  Entity("LWPOLYLINE", style.layer, *style.line);
  AddLine(style);
  entities_.Text(100, "AcDbPolyline").Integer(90, count).Integer(70, (closed ? kClosed : 0) | kDashesGoOn);
  Vertices(points);
}

void DxfCanvas::Dots(std::span<const SheetPoint> centres, double radius, const Style& style) {
  if (!IsFilled(style) || !(radius > 0)) return;
  for (const SheetPoint& centre : centres) Disc(centre, radius, style);
}

void DxfCanvas::Text(SheetPoint at, std::string_view utf8, const TextFormat& format, const Style& style) {
  const double height = Length(format.size) * kHeightOfCapital;
  const std::string bytes = TextBytes(utf8);
  if (!style.fill || bytes.empty() || !(height > 0)) return;
  constexpr int kMiddleOfCapitals = 2;
  const SheetPoint p = Include(at);
  Entity("TEXT", style.layer, *style.fill).Text(100, "AcDbText").At(10, p.x, p.y).Integer(30, 0);
  entities_.Real(40, height).Text(1, bytes);
  if (format.angle != 0) entities_.Real(50, std::remainder(-Limited(format.angle), 360));
  entities_.Text(7, format.bold ? kDxfBoldStyle : "Standard").Integer(72, static_cast<int>(format.anchor));
  entities_.At(11, p.x, p.y).Integer(31, 0).Text(100, "AcDbText").Integer(73, kMiddleOfCapitals);
}

void DxfCanvas::Finish(const exchange::Sink& sink) const {
  sink(DxfHead(contents_));
  sink(entities_.Bytes());
  sink(DxfTail());
}

}  // namespace velmora::drawing
