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
  std::string sheet;               // its size
  bool has_borings = false;
  bool has_strays = false;  // borings without a place along the road
  bool has_key = false;     // some borings have numbers
  bool dots = false;        // borings are shown as dots
  size_t unlabelled_in_plan = 0;
  size_t unlabelled_in_profile = 0;
};

// The height of the block, by the name's length.
double TitleBlockHeight(const TitleBlock& title, double width);
void DrawTitleBlock(Canvas& canvas, const SheetRect& panel, const TitleBlock& title);

// The longest round length that fits, in alternating parts, with `at` at its upper left; about 4 mm high with
// its numbers.
void DrawScaleBar(Canvas& canvas, SheetPoint at, double width, double scale);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_TITLE_BLOCK_H_
