#include "bench/report/counted.h"

#include <cairo-pdf.h>

#include <numbers>
#include <utility>

namespace velmora::bench {
namespace {

using Primitive = CountingCanvas::Primitive;

constexpr double kPoint = 72 / 25.4;  // PDF's, a millimetre

cairo_status_t Take(void* bytes, const unsigned char*, unsigned int length) {
  *static_cast<size_t*>(bytes) += length;
  return CAIRO_STATUS_SUCCESS;
}

void BeginPage(cairo_t* cairo, drawing::SheetPoint size, bool first) {
  if (!first) cairo_show_page(cairo);
  cairo_pdf_surface_set_size(cairo_get_target(cairo), size.x * kPoint, size.y * kPoint);
}

void Draw(cairo_t* cairo, const Primitive& primitive) {
  const drawing::SheetPoint at = primitive.points.front().at;
  if (primitive.kind == CountingCanvas::kText) {
    cairo_set_font_size(cairo, primitive.size);
    cairo_move_to(cairo, at.x, at.y);
    cairo_show_text(cairo, primitive.text.c_str());
    cairo_new_path(cairo);
    return;
  }
  if (primitive.kind == CountingCanvas::kRectangle) {
    const drawing::SheetPoint size = primitive.points.back().at;
    cairo_rectangle(cairo, at.x, at.y, size.x, size.y);
  } else if (primitive.kind == CountingCanvas::kCircle) {
    cairo_arc(cairo, at.x, at.y, primitive.size, 0, 2 * std::numbers::pi);
  } else if (primitive.kind == CountingCanvas::kDots) {
    for (const drawing::PathPoint& point : primitive.points) {
      cairo_move_to(cairo, point.at.x, point.at.y);
      cairo_close_path(cairo);
    }
  } else {
    for (const drawing::PathPoint& point : primitive.points) {
      if (point.bulge != 0)
        cairo_arc(cairo, point.at.x, point.at.y, 100, 0, 0.1);
      else
        cairo_line_to(cairo, point.at.x, point.at.y);
    }
  }
  cairo_stroke(cairo);
}

}  // namespace

void CountingCanvas::Dots(std::span<const drawing::SheetPoint> centres, double radius,
                          const drawing::Style&) {
  std::vector<drawing::PathPoint> points;
  for (const drawing::SheetPoint& centre : centres) points.push_back({centre});
  if (!points.empty()) Add({kDots, std::move(points), radius});
}

size_t DrawBare(const std::vector<Primitive>& primitives) {
  size_t bytes = 0;
  cairo_surface_t* const surface = cairo_pdf_surface_create_for_stream(Take, &bytes, 1, 1);
  cairo_t* const cairo = cairo_create(surface);
  cairo_scale(cairo, kPoint, kPoint);
  cairo_select_font_face(cairo, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_line_width(cairo, 0.18);
  cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
  bool first = true;
  for (const Primitive& primitive : primitives) {
    if (primitive.points.empty()) continue;
    if (primitive.kind == CountingCanvas::kSheet)
      BeginPage(cairo, primitive.points.front().at, std::exchange(first, false));
    else
      Draw(cairo, primitive);
  }
  cairo_show_page(cairo);
  cairo_destroy(cairo);
  cairo_surface_destroy(surface);
  return bytes;
}

}  // namespace velmora::bench
