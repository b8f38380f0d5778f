// What stands before and after the entities of a DXF file of release 2004: header, tables, blocks, objects.
#ifndef VELMORA_DRAWING_DXF_SECTIONS_H_
#define VELMORA_DRAWING_DXF_SECTIONS_H_

#include <array>
#include <string>
#include <vector>

#include "velmora/drawing/canvas.h"
#include "velmora/drawing/dxf_groups.h"
#include "velmora/drawing/scale.h"

namespace velmora::drawing {

inline constexpr long long kDxfModelSpace = 0x11;    // handle of the block that owns the entities
inline constexpr long long kFirstDxfEntity = 0x100;  // the handles below are of what is always there
inline constexpr std::string_view kDxfBoldStyle = "BOLD";

struct DxfLayer {
  std::string name;
  Colour colour;
};
// A part of the drawing that CAD shows, or plots, by its name.
struct DxfView {
  std::string name;
  SheetRect rectangle;  // x and y of its lower left corner
};

// In the drawing's unit.
struct DxfContents {
  bool metres = false;  // else millimetres
  Interval x;
  Interval y;
  std::vector<DxfLayer> layers;
  std::vector<std::array<double, 2>> dashes;  // named by DxfDashName of their index
  std::vector<DxfView> views;
  long long next_handle = kFirstDxfEntity;
};

std::string DxfDashName(size_t index);

// The colour's groups: as a number for programs that know no others, and as it is. What is nearly black has
// the number of the paper's opposite alone, so that it is seen on a dark screen too.
void AddDxfColour(Colour colour, DxfGroupText* groups);

// Up to the first entity.
std::string DxfHead(const DxfContents& contents);
// From the last entity on.
std::string DxfTail();

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_DXF_SECTIONS_H_
