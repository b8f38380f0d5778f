#include "bench/report/counted.h"

#include <cairo-pdf.h>

#include <algorithm>
#include <numbers>
#include <random>
#include <string>

namespace velmora::bench {
namespace {

constexpr double kPoint = 72 / 25.4;  // PDF's, a millimetre

cairo_status_t Take(void* bytes, const unsigned char*, unsigned int length) {
  *static_cast<size_t*>(bytes) += length;
  return CAIRO_STATUS_SUCCESS;
}

}  // namespace

void CountingCanvas::Path(std::span<const drawing::PathPoint> points, bool, const drawing::Style&) {
  const bool arcs = std::any_of(points.begin(), points.end(),
                                [](const drawing::PathPoint& point) { return point.bulge != 0; });
  Add(arcs ? kArcs : kPath, points.size());
}

size_t DrawBare(const std::vector<CountingCanvas::Primitive>& primitives) {
  size_t bytes = 0;
  cairo_surface_t* const surface =
      cairo_pdf_surface_create_for_stream(Take, &bytes, 420 * kPoint, 297 * kPoint);
  cairo_t* const cairo = cairo_create(surface);
  cairo_scale(cairo, kPoint, kPoint);
  cairo_select_font_face(cairo, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(cairo, 2);
  cairo_set_line_width(cairo, 0.18);
  std::mt19937 random(3);
  const auto part = [&](unsigned below) { return static_cast<double>(random() % (below * 100)) / 100; };
  const std::string letters = "24V1007 H 12.34 1/640.250 Väg 7 Norrsjö, station 1650, level 18.25 ";
  bool first = true;
  for (const auto& [kind, size] : primitives) {
    const double x = part(400);
    const double y = part(280);
    switch (kind) {
      case CountingCanvas::kSheet:
        if (!first) cairo_show_page(cairo);
        first = false;
        break;
      case CountingCanvas::kLine:
        cairo_move_to(cairo, x, y);
        cairo_line_to(cairo, x + part(20), y + part(20));
        cairo_stroke(cairo);
        break;
      case CountingCanvas::kRectangle:
        cairo_rectangle(cairo, x, y, part(20), part(20));
        cairo_stroke(cairo);
        break;
      case CountingCanvas::kCircle:
        cairo_arc(cairo, x, y, 1, 0, 2 * std::numbers::pi);
        cairo_stroke(cairo);
        break;
      case CountingCanvas::kPath:
        for (size_t i = 0; i < size; ++i) cairo_line_to(cairo, x + part(20), y + part(20));
        cairo_stroke(cairo);
        break;
      case CountingCanvas::kArcs:
        for (size_t i = 0; i + 1 < size; ++i) cairo_arc(cairo, x + part(20), y + part(20), 5, 0, 1);
        cairo_stroke(cairo);
        break;
      case CountingCanvas::kDots:
        for (size_t i = 0; i < size; ++i) {
          cairo_move_to(cairo, x + part(20), y + part(20));
          cairo_close_path(cairo);
        }
        cairo_stroke(cairo);
        break;
      case CountingCanvas::kText: {
        std::string text;
        while (text.size() < size) text += letters;
        text.resize(size);
        while (!text.empty() && (text.back() & 0x80) != 0) text.pop_back();
        cairo_move_to(cairo, x, y);
        cairo_show_text(cairo, text.c_str());
        cairo_new_path(cairo);
        break;
      }
      case CountingCanvas::kKinds:
        break;
    }
  }
  cairo_show_page(cairo);
  cairo_destroy(cairo);
  cairo_surface_destroy(surface);
  return bytes;
}

}  // namespace velmora::bench
