// Drawings as a DXF file of release 2004, which CAD programs open.
#ifndef VELMORA_DRAWING_DXF_CANVAS_H_
#define VELMORA_DRAWING_DXF_CANVAS_H_

#include <string>

#include "velmora/drawing/canvas.h"
#include "velmora/drawing/dxf_sections.h"
#include "velmora/drawing/report.h"
#include "velmora/exchange/sink.h"

namespace velmora::drawing {

// Everything lies in model space, which every program shows. Arcs are true arcs. A style's layer is a layer
// of its name in capitals, with the colour of what is drawn first on it. Texts are Windows-1252 with \U+XXXX
// for other characters, at most 255 characters. White areas are left out, since the screen may be black.
// Numbers have at most four decimals, bulges ten.
class DxfCanvas final : public Canvas {
 public:
  // In millimetres, the first sheet's lower left corner at the origin, further ones to the right of it, each
  // with its outline on the layer "PAPER" and a view of its name, "SHEET-1".
  DxfCanvas() = default;
  // In metres on the map. Sheets have no outline.
  explicit DxfCanvas(const MapPosition& position);

  void BeginSheet(std::string_view title, double width, double height) override;
  void Line(SheetPoint a, SheetPoint b, const Style& style) override;
  void Rectangle(const SheetRect& rectangle, const Style& style) override;
  void Circle(SheetPoint centre, double radius, const Style& style) override;
  void Path(std::span<const PathPoint> points, bool closed, const Style& style) override;
  void Dots(std::span<const SheetPoint> centres, double radius, const Style& style) override;
  void Text(SheetPoint at, std::string_view utf8, const TextFormat& format, const Style& style) override;

  // Writes the whole file.
  void Finish(const exchange::Sink& sink) const;

 private:
  SheetPoint InDrawing(SheetPoint p) const;
  double Length(double millimetres) const;
  // Notes that the drawing extends to `p`.
  SheetPoint Include(SheetPoint p);
  // The begin of an entity: its layer and colour.
  DxfGroupText& Entity(std::string_view type, std::string_view layer, Colour colour);
  // Of an entity that is a line: its dashes and width.
  void AddLine(const Style& style);
  void Vertices(std::span<const PathPoint> points);
  void Disc(SheetPoint centre, double radius, const Style& style);

  MapPosition position_;
  double next_x_ = 0;  // of the next sheet
  DxfContents contents_;
  DxfGroupText entities_;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_DXF_CANVAS_H_
