// Draws on a page of cairo.
#ifndef VELMORA_CLI_REPORT_CAIRO_DRAWING_H_
#define VELMORA_CLI_REPORT_CAIRO_DRAWING_H_

#include <cairo.h>

#include <memory>

#include "cli/report/cairo_canvas.h"

namespace velmora::cli {

template <class Object, void (*kDestroy)(Object*)>
struct CairoDeleter {
  void operator()(Object* object) const { kDestroy(object); }
};
using CairoContext = std::unique_ptr<cairo_t, CairoDeleter<cairo_t, cairo_destroy>>;
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoDeleter<cairo_surface_t, cairo_surface_destroy>>;
using CairoFont =
    std::unique_ptr<cairo_font_face_t, CairoDeleter<cairo_font_face_t, cairo_font_face_destroy>>;

// Throws a Refusal for anything but success.
void RequireCairo(cairo_status_t status);

// A file whose sheets are drawn one at a time.
class CairoCanvas : public FileCanvas {
 public:
  // Throws a Refusal when the font is not installed.
  CairoCanvas();

  void Line(drawing::SheetPoint a, drawing::SheetPoint b, const drawing::Style& style) override;
  void Rectangle(const drawing::SheetRect& rectangle, const drawing::Style& style) override;
  void Circle(drawing::SheetPoint centre, double radius, const drawing::Style& style) override;
  void Path(std::span<const drawing::PathPoint> points, bool closed, const drawing::Style& style) override;
  void Dots(std::span<const drawing::SheetPoint> centres, double radius,
            const drawing::Style& style) override;
  void Text(drawing::SheetPoint at, std::string_view utf8, const drawing::TextFormat& format,
            const drawing::Style& style) override;

 protected:
  // Draws on this surface from now on, `unit` of whose units are a millimetre.
  void DrawOn(cairo_surface_t* surface, double unit);
  cairo_t* Context() const { return context_.get(); }
  void StopDrawing() { context_.reset(); }
  // Stops drawing and throws a Refusal if any of it failed.
  void EndDrawing();
  // Whether EndDrawing has thrown.
  bool HasFailed() const { return failed_; }

 private:
  // Fills and draws the path.
  void Paint(const drawing::Style& style);

  CairoFont regular_;
  CairoFont bold_;
  CairoContext context_;
  bool failed_ = false;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_REPORT_CAIRO_DRAWING_H_
