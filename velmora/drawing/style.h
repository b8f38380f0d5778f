// How the drawing looks: attributes of its groups, and sizes in millimetres.
#ifndef VELMORA_DRAWING_STYLE_H_
#define VELMORA_DRAWING_STYLE_H_

#include "velmora/drawing/labels.h"

namespace velmora::drawing {

inline constexpr double kSheetWidth = 420;  // A3
inline constexpr double kSheetHeight = 297;

inline constexpr const char* kFrame = "fill=\"none\" stroke=\"#222\" stroke-width=\"0.35\"";
inline constexpr const char* kHairline = "fill=\"none\" stroke=\"#555\" stroke-width=\"0.13\"";
inline constexpr const char* kGrid = "fill=\"none\" stroke=\"#d5d9dd\" stroke-width=\"0.13\"";
inline constexpr const char* kCross = "fill=\"none\" stroke=\"#9aa3ab\" stroke-width=\"0.13\"";
inline constexpr const char* kGridText = "fill=\"#78828b\"";
inline constexpr const char* kText = "fill=\"#222\"";
inline constexpr const char* kInk = "fill=\"#222\" stroke=\"#222\" stroke-width=\"0.18\"";
inline constexpr const char* kRoad =
    "fill=\"none\" stroke=\"#b32424\" stroke-width=\"0.8\" stroke-linejoin=\"round\" "
    "stroke-linecap=\"round\"";
inline constexpr const char* kRoadThin = "fill=\"none\" stroke=\"#b32424\" stroke-width=\"0.18\"";
inline constexpr const char* kRoadMark = "fill=\"#fff\" stroke=\"#b32424\" stroke-width=\"0.25\"";
inline constexpr const char* kRoadText = "fill=\"#b32424\"";
inline constexpr const char* kBoring = "fill=\"#fff\" stroke=\"#174f8c\" stroke-width=\"0.25\"";
inline constexpr const char* kBoringDot = "fill=\"#174f8c\"";
inline constexpr const char* kBoringLine = "fill=\"none\" stroke=\"#174f8c\" stroke-width=\"0.13\"";
inline constexpr const char* kBoringText = "fill=\"#174f8c\"";
inline constexpr const char* kStray = "fill=\"#fff\" stroke=\"#7d7d7d\" stroke-width=\"0.25\"";
inline constexpr const char* kStrayDot = "fill=\"#7d7d7d\"";
inline constexpr const char* kStrayText = "fill=\"#666\"";
// Very many dots as one path of points.
inline constexpr const char* kBoringDots =
    "fill=\"none\" stroke=\"#174f8c\" stroke-width=\"0.8\" stroke-linecap=\"round\"";
inline constexpr const char* kStrayDots =
    "fill=\"none\" stroke=\"#7d7d7d\" stroke-width=\"0.8\" stroke-linecap=\"round\"";

inline constexpr double kHeadingSize = 3.0;  // of text
inline constexpr double kLabelSize = 2.3;
inline constexpr double kSmallSize = 2.0;
inline constexpr double kBoringRadius = 1.05;
inline constexpr double kDotRadius = 0.35;
inline constexpr double kLongestId = 30;  // mm, of a label

// A part of the sheet, upright.
struct Panel {
  double x;
  double y;
  double width;
  double height;

  double Right() const { return x + width; }
  double Bottom() const { return y + height; }
  Panel Inset(double by) const { return {x + by, y + by, width - 2 * by, height - 2 * by}; }
  Box AsBox() const { return {{x + width / 2, y + height / 2}, width / 2, height / 2}; }
  bool Holds(SheetPoint p) const { return p.x >= x && p.x <= Right() && p.y >= y && p.y <= Bottom(); }
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_STYLE_H_
