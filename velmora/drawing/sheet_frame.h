// Frame and title block of a sheet of a report.
#ifndef VELMORA_DRAWING_SHEET_FRAME_H_
#define VELMORA_DRAWING_SHEET_FRAME_H_

#include <string>

#include "velmora/drawing/report.h"
#include "velmora/drawing/sheet_layout.h"

namespace velmora::drawing {

// What the title block of one sheet says beside what all of them say.
struct SheetTitle {
  std::string content;  // "Plan and profile 0/320 to 0/640"
  size_t number = 1;
  size_t sheets = 1;
  double scale = 0;         // of plan and lengths; 0 without either
  double height_scale = 0;  // 0 without a profile
};

inline constexpr double kLargestStampText = 20;  // mm

// Whether the field is drawn: it starts in the block and is not too high.
bool IsInTitleBlock(const StampField& field);

// Begins the sheet and draws its frame and title block.
void BeginFramedSheet(Canvas& canvas, const SheetLayout& layout, const Report& report,
                      const SheetTitle& title);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_SHEET_FRAME_H_
