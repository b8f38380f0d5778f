#include "cli/report/cairo_drawing.h"

#include <cairo-ft.h>
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "cli/terminal/error.h"
#include "velmora/drawing/plain_text.h"

namespace velmora::cli {
namespace {

using drawing::Colour;
using drawing::PathPoint;
using drawing::SheetPoint;
using drawing::Style;

constexpr double kLargestNumber = 1e5;  // mm; cairo keeps coordinates in 32 bits
constexpr double kWidestLine = 100;
constexpr double kSmallestText = 0.01;  // mm; FreeType takes neither smaller nor larger ones
constexpr double kLargestText = 1000;
constexpr const char* kFamily = "DejaVu Sans";

double Bounded(double value) {
  return std::isfinite(value) ? std::clamp(value, -kLargestNumber, kLargestNumber) : 0;
}

SheetPoint Bounded(SheetPoint p) { return {Bounded(p.x), Bounded(p.y)}; }

using Pattern = std::unique_ptr<FcPattern, CairoDeleter<FcPattern, FcPatternDestroy>>;
using FontConfig = std::unique_ptr<FcConfig, CairoDeleter<FcConfig, FcConfigDestroy>>;

const FcChar8* Name(const char* text) { return reinterpret_cast<const FcChar8*>(text); }

// The file of the upright font of this weight.
std::string FontFile(FcConfig* config, int weight) {
  const Pattern wanted(FcPatternCreate());
  FcPatternAddString(wanted.get(), FC_FAMILY, Name(kFamily));
  FcPatternAddInteger(wanted.get(), FC_WEIGHT, weight);
  FcPatternAddInteger(wanted.get(), FC_WIDTH, FC_WIDTH_NORMAL);
  FcPatternAddInteger(wanted.get(), FC_SLANT, FC_SLANT_ROMAN);
  const std::unique_ptr<FcObjectSet, CairoDeleter<FcObjectSet, FcObjectSetDestroy>> facts(
      FcObjectSetCreate());
  FcObjectSetAdd(facts.get(), FC_FILE);
  const std::unique_ptr<FcFontSet, CairoDeleter<FcFontSet, FcFontSetDestroy>> found(
      FcFontList(config, wanted.get(), facts.get()));
  FcChar8* file = nullptr;
  if (!found || found->nfont == 0 || FcPatternGetString(found->fonts[0], FC_FILE, 0, &file) != FcResultMatch)
    throw Refusal(std::string("the font ") + kFamily +
                  " is not installed, which PDF and PNG need; install it (Debian: fonts-dejavu-core), or "
                  "choose a name that ends in .html or .svg");
  return reinterpret_cast<const char*>(file);
}

// By its file alone, so that a user's settings for the screen do not change a drawing.
CairoFont LoadFont(FcConfig* config, int weight) {
  const Pattern font(FcPatternCreate());
  FcPatternAddString(font.get(), FC_FILE, Name(FontFile(config, weight).c_str()));
  FcPatternAddInteger(font.get(), FC_INDEX, 0);
  CairoFont face(cairo_ft_font_face_create_for_pattern(font.get()));
  RequireCairo(cairo_font_face_status(face.get()));
  return face;
}

void SetColour(cairo_t* cairo, Colour colour) {
  const auto part = [&](int shift) { return (colour >> shift & 0xFF) / 255.0; };
  cairo_set_source_rgb(cairo, part(16), part(8), part(0));
}

// From the current point, `a`, on to `b`.
void AddSegment(cairo_t* cairo, SheetPoint a, double bulge, SheetPoint b) {
  const double chord = std::hypot(b.x - a.x, b.y - a.y);
  const double radius = chord * (1 + bulge * bulge) / (4 * std::fabs(bulge));
  if (bulge == 0 || !(radius > 0 && radius < kLargestNumber)) {
    cairo_line_to(cairo, b.x, b.y);
    return;
  }
  // The centre lies on the chord's perpendicular; counter-clockwise on the sheet is towards smaller angles.
  const double along = (1 - bulge * bulge) / (4 * bulge);
  const SheetPoint centre = {(a.x + b.x) / 2 + along * (b.y - a.y), (a.y + b.y) / 2 - along * (b.x - a.x)};
  const double from = std::atan2(a.y - centre.y, a.x - centre.x);
  const double to = std::atan2(b.y - centre.y, b.x - centre.x);
  (bulge > 0 ? cairo_arc_negative : cairo_arc)(cairo, centre.x, centre.y, radius, from, to);
}

}  // namespace

void RequireCairo(cairo_status_t status) {
  if (status != CAIRO_STATUS_SUCCESS)
    throw Refusal(std::string("the drawing could not be made: ") + cairo_status_to_string(status));
}

CairoCanvas::CairoCanvas() {
  const FontConfig config(FcInitLoadConfigAndFonts());
  regular_ = LoadFont(config.get(), FC_WEIGHT_REGULAR);
  bold_ = LoadFont(config.get(), FC_WEIGHT_BOLD);
}

void CairoCanvas::DrawOn(cairo_surface_t* surface, double unit) {
  context_.reset(cairo_create(surface));
  cairo_scale(Context(), unit, unit);
  using Options =
      std::unique_ptr<cairo_font_options_t, CairoDeleter<cairo_font_options_t, cairo_font_options_destroy>>;
  const Options options(cairo_font_options_create());
  cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
  cairo_set_font_options(Context(), options.get());
}

void CairoCanvas::EndDrawing() {
  const CairoContext ended = std::move(context_);
  failed_ = cairo_status(ended.get()) != CAIRO_STATUS_SUCCESS;
  RequireCairo(cairo_status(ended.get()));
}

void CairoCanvas::Paint(const Style& style) {
  cairo_t* const cairo = Context();
  if (style.fill) {
    SetColour(cairo, *style.fill);
    style.line ? cairo_fill_preserve(cairo) : cairo_fill(cairo);
  }
  if (style.line) {
    SetColour(cairo, *style.line);
    cairo_set_line_width(cairo, std::clamp(Bounded(style.width), 0.0, kWidestLine));
    cairo_set_line_cap(cairo, style.round ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
    cairo_set_line_join(cairo, style.round ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
    cairo_set_dash(cairo, style.dash.data(), style.dash[0] > 0 ? 2 : 0, 0);
    cairo_stroke(cairo);
  }
  cairo_new_path(cairo);
}

void CairoCanvas::Line(SheetPoint a, SheetPoint b, const Style& style) {
  const PathPoint ends[] = {{a}, {b}};
  Path(ends, false,
       {.layer = style.layer,
        .line = style.line,
        .width = style.width,
        .round = style.round,
        .dash = style.dash});
}

void CairoCanvas::Rectangle(const drawing::SheetRect& r, const Style& style) {
  cairo_rectangle(Context(), Bounded(r.x), Bounded(r.y), Bounded(r.width), Bounded(r.height));
  Paint(style);
}

void CairoCanvas::Circle(SheetPoint centre, double radius, const Style& style) {
  if (!(radius > 0)) return;
  const SheetPoint at = Bounded(centre);
  cairo_arc(Context(), at.x, at.y, Bounded(radius), 0, 2 * std::numbers::pi);
  cairo_close_path(Context());
  Paint(style);
}

void CairoCanvas::Path(std::span<const PathPoint> points, bool closed, const Style& style) {
  if (points.empty()) return;
  SheetPoint at = Bounded(points[0].at);
  cairo_move_to(Context(), at.x, at.y);
  for (size_t i = 0; i + (closed ? 0 : 1) < points.size(); ++i) {
    const SheetPoint next = Bounded(points[i + 1 < points.size() ? i + 1 : 0].at);
    AddSegment(Context(), at, points[i].bulge, next);
    at = next;
  }
  if (closed) cairo_close_path(Context());
  Paint(style);
}

// A line without length and with round ends is a disc; all of them are one path.
void CairoCanvas::Dots(std::span<const SheetPoint> centres, double radius, const Style& style) {
  if (!style.fill || !(radius > 0)) return;
  for (const SheetPoint& centre : centres) {
    const SheetPoint at = Bounded(centre);
    cairo_move_to(Context(), at.x, at.y);
    cairo_close_path(Context());
  }
  Paint({.layer = style.layer, .line = style.fill, .width = 2 * radius, .round = true});
}

void CairoCanvas::Text(SheetPoint at, std::string_view utf8, const drawing::TextFormat& format,
                       const Style& style) {
  if (!style.fill || utf8.empty() || !(format.size >= kSmallestText)) return;
  cairo_t* const cairo = Context();
  const std::string text = drawing::PlainText(utf8);
  const double size = std::min(format.size, kLargestText);
  const SheetPoint p = Bounded(at);
  SetColour(cairo, *style.fill);
  cairo_set_font_face(cairo, (format.bold ? bold_ : regular_).get());
  cairo_set_font_size(cairo, size);
  double start = 0;
  if (format.anchor != drawing::TextAnchor::kStart) {
    cairo_text_extents_t extents;
    cairo_text_extents(cairo, text.c_str(), &extents);
    start = extents.x_advance * (format.anchor == drawing::TextAnchor::kEnd ? -1 : -0.5);
  }
  cairo_save(cairo);
  cairo_translate(cairo, p.x, p.y);
  cairo_rotate(cairo, Bounded(format.angle) * std::numbers::pi / 180);
  cairo_move_to(cairo, start, drawing::kMiddleOfCapital * size);
  cairo_show_text(cairo, text.c_str());
  cairo_restore(cairo);
  cairo_new_path(cairo);
}

}  // namespace velmora::cli
