// The styles, sizes and layers of the drawings. Lengths are in millimetres.
#ifndef VELMORA_DRAWING_STYLE_H_
#define VELMORA_DRAWING_STYLE_H_

#include <cstddef>

#include "velmora/drawing/canvas.h"

namespace velmora::drawing {

inline constexpr Colour kBlack = 0x222222;
inline constexpr Colour kWhite = 0xFFFFFF;
inline constexpr Colour kRed = 0xB32424;
inline constexpr Colour kBlue = 0x174F8C;
inline constexpr Colour kGrey = 0x7D7D7D;

inline constexpr Style kFrame = {.layer = "frame", .line = kBlack, .width = 0.35};
inline constexpr Style kHairline = {.layer = "frame", .line = 0x555555, .width = 0.13};
inline constexpr Style kText = {.layer = "frame", .fill = kBlack};
inline constexpr Style kScaleBarFilled = {.layer = "frame", .fill = kBlack, .line = kBlack, .width = 0.18};
inline constexpr Style kScaleBarEmpty = {.layer = "frame", .fill = kWhite, .line = kBlack, .width = 0.18};

inline constexpr Style kGrid = {.layer = "grid", .line = 0xD5D9DD, .width = 0.13};
inline constexpr Style kCross = {.layer = "grid", .line = 0x9AA3AB, .width = 0.13};
inline constexpr Style kGridText = {.layer = "grid", .fill = 0x78828B};
inline constexpr Style kArrowLight = {
    .layer = "grid", .fill = kWhite, .line = kBlack, .width = 0.18, .round = true};
inline constexpr Style kArrowDark = {
    .layer = "grid", .fill = kBlack, .line = kBlack, .width = 0.18, .round = true};
inline constexpr Style kArrowText = {.layer = "grid", .fill = kBlack};

inline constexpr Style kRoad = {.layer = "road", .line = kRed, .width = 0.8, .round = true};
inline constexpr Style kRoadThin = {.layer = "road", .line = kRed, .width = 0.18};
inline constexpr Style kRoadMark = {.layer = "road", .fill = kWhite, .line = kRed, .width = 0.25};
inline constexpr Style kRoadText = {.layer = "road", .fill = kRed};
inline constexpr Style kStation = {.layer = "stations", .line = 0x555555, .width = 0.13};
inline constexpr Style kStationText = {.layer = "stations", .fill = kBlack};

inline constexpr Style kBoring = {.layer = "borings", .fill = kWhite, .line = kBlue, .width = 0.25};
inline constexpr Style kBoringDot = {.layer = "borings", .fill = kBlue};
inline constexpr Style kBoringLine = {.layer = "borings", .line = kBlue, .width = 0.13};
inline constexpr Style kBoringLevel = {.layer = "borings", .line = kBlue, .width = 0.45};
inline constexpr Style kBoringText = {.layer = "borings", .fill = kBlue};
inline constexpr Style kLeader = {.layer = "borings", .line = 0x555555, .width = 0.13};
inline constexpr Style kStray = {.layer = "borings", .fill = kWhite, .line = kGrey, .width = 0.25};
inline constexpr Style kStrayText = {.layer = "borings", .fill = 0x666666};

inline constexpr Style kMatchLine = {.layer = "match", .line = kBlack, .width = 0.25, .dash = {5, 1.5}};
inline constexpr Style kMatchText = {.layer = "match", .fill = kBlack};
inline constexpr Style kOutline = {.layer = "sheets", .line = 0x555555, .width = 0.25};
inline constexpr Style kOutlineLeader = {.layer = "sheets", .line = 0x555555, .width = 0.13};
inline constexpr Style kOutlineText = {.layer = "sheets", .fill = kBlack};
inline constexpr Style kBandLine = {.layer = "bands", .line = 0x555555, .width = 0.13};
inline constexpr Style kBandMark = {.layer = "bands", .line = kRed, .width = 0.25};
inline constexpr Style kBandText = {.layer = "bands", .fill = kBlack};
inline constexpr Style kTitleLine = {.layer = "title", .line = kBlack, .width = 0.35};
inline constexpr Style kTitleThin = {.layer = "title", .line = 0x555555, .width = 0.13};
inline constexpr Style kTitleText = {.layer = "title", .fill = kBlack};
inline constexpr Style kTitleLabel = {.layer = "title", .fill = 0x666666};
inline constexpr Style kTableLine = {.layer = "table", .line = 0x555555, .width = 0.13};
inline constexpr Style kTableText = {.layer = "table", .fill = kBlack};

inline constexpr double kHeadingSize = 3.0;  // of text
inline constexpr double kLabelSize = 2.3;
inline constexpr double kSmallSize = 2.0;
inline constexpr double kBoringRadius = 1.05;
inline constexpr double kDotRadius = 0.35;
inline constexpr double kManyDotsRadius = 0.4;  // where borings are dots alone
inline constexpr size_t kMostCircledBorings = 150;
// Labels of more would find no room, and take long to find none.
inline constexpr size_t kMostLabelledBorings = 1500;

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_STYLE_H_
