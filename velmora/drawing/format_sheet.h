// Sheet formats as a drawing: the three nested rectangles of each, all to one scale.
#ifndef VELMORA_DRAWING_FORMAT_SHEET_H_
#define VELMORA_DRAWING_FORMAT_SHEET_H_

#include <span>

#include "velmora/drawing/canvas.h"
#include "velmora/drawing/ritnings_format.h"

namespace velmora::drawing {

// Begins the sheet and draws it. The inner rectangles are centred in the outermost, since a format gives
// their sizes but not their positions.
void DrawFormats(std::span<const ritformattype> formats, Canvas& canvas);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_FORMAT_SHEET_H_
