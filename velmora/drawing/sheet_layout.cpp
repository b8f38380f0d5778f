#include "velmora/drawing/sheet_layout.h"

#include <algorithm>
#include <cmath>

namespace velmora::drawing {
namespace {

constexpr ritformattype kA3 = {L"A3", 353, 250, 373, 280, 420, 297};
constexpr double kLeastWidth = 100;  // mm, of the views
constexpr double kLeastHeight = 150;
constexpr double kLargest = 20000;
constexpr double kGap = 3;  // between views and title block
constexpr double kLeastBeside = 80;
constexpr double kNotesHeight = 34;
constexpr double kRoomAbove = 1.0 / 6;  // of the margin between frame and area
constexpr double kLeft = 3.0 / 4;       // the same, for the labels of axes

bool IsUsable(const ritformattype& f) {
  return f.arkBredd >= f.ramBredd && f.arkHojd >= f.ramHojd && f.ramBredd >= kTitleWidth &&
         f.ramBredd >= f.ytaBredd && f.ramHojd >= f.ytaHojd && f.ytaBredd >= kLeastWidth &&
         f.ytaHojd >= kLeastHeight && f.arkBredd <= kLargest && f.arkHojd <= kLargest;
}

}  // namespace

SheetLayout::SheetLayout(const ritformattype& wanted) {
  const ritformattype& format = IsUsable(wanted) ? wanted : kA3;
  width = format.arkBredd;
  height = format.arkHojd;
  const double margin = (height - format.ramHojd) / 2;
  const double right = std::min(margin, width - format.ramBredd);
  frame = {width - right - format.ramBredd, margin, format.ramBredd, format.ramHojd};
  title = {frame.Right() - kTitleWidth, frame.Bottom() - kTitleHeight, kTitleWidth, kTitleHeight};
  beside = {frame.x, title.y, frame.width - kTitleWidth, kTitleHeight};
  if (beside.width < kLeastBeside) beside = {frame.x, title.y - kNotesHeight, frame.width, kNotesHeight};
  const double x = frame.x + (format.ramBredd - format.ytaBredd) * kLeft;
  const double y = frame.y + (format.ramHojd - format.ytaHojd) * kRoomAbove;
  views = {x, y, format.ytaBredd, std::min(y + format.ytaHojd, beside.y - kGap) - y};
}

SheetRect TableArea(const SheetLayout& layout) {
  constexpr double kAround = 4;  // mm
  constexpr double kHeading = 6;
  const double top = layout.frame.y + kAround + kHeading;
  return {layout.frame.x + kAround, top, layout.frame.width - 2 * kAround, layout.beside.y - kGap - top};
}

}  // namespace velmora::drawing
