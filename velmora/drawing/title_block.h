// The title block below the drawing: name, facts, notes, legend and scale bar.
#ifndef VELMORA_DRAWING_TITLE_BLOCK_H_
#define VELMORA_DRAWING_TITLE_BLOCK_H_

#include <string>
#include <vector>

#include "velmora/drawing/canvas.h"

namespace velmora::drawing {

struct TitleBlock {
  std::string name;
  std::vector<std::string> facts;  // a line each
  std::vector<std::string> notes;  // a line each, about what the sheet leaves out
  double plan_scale = 0;           // the N of 1:N for the scale bar; 0 without a plan
  bool has_borings = false;
  bool dots = false;  // borings are shown as dots
};

void DrawTitleBlock(Canvas& canvas, const SheetRect& panel, const TitleBlock& title);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_TITLE_BLOCK_H_
