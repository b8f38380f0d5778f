// How a sheet of a report is divided.
//
//   +-sheet----------------------+
//   |  +-frame-----------------+ |   The margin that is left over is at the left, where sheets are bound.
//   |  | +-views-------------+ | |   The views are as wide as the format's innermost area; their axes are
//   |  | |                   | | |   labelled in the margin between that and the frame.
//   |  | +-------------------+ | |
//   |  |  beside    |  title  | |
//   +--+-----------------------+-+
#ifndef VELMORA_DRAWING_SHEET_LAYOUT_H_
#define VELMORA_DRAWING_SHEET_LAYOUT_H_

#include "velmora/drawing/canvas.h"
#include "velmora/drawing/ritnings_format.h"

namespace velmora::drawing {

inline constexpr double kTitleWidth = 183;  // mm: the frame of an upright A4
inline constexpr double kTitleHeight = 44;

struct SheetLayout {
  // A format that is too small for title block and views, or not finite, is taken for A3.
  explicit SheetLayout(const ritformattype& format);

  double width;
  double height;
  SheetRect frame;
  SheetRect views;
  SheetRect title;   // in the frame's lower right corner
  SheetRect beside;  // for notes: the frame beside it or, where there is no room, above it
};

// For tables, with room for a heading above.
SheetRect TableArea(const SheetLayout& layout);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_SHEET_LAYOUT_H_
