// Sheet formats as a drawing: the three nested rectangles of each, all to one scale, in SVG.
#ifndef VELMORA_CLI_FORMATS_DRAWING_H_
#define VELMORA_CLI_FORMATS_DRAWING_H_

#include <string>
#include <vector>

#include "velmora/drawing/ritnings_format.h"

namespace velmora::cli {

// The whole file. The inner rectangles stand in the middle of the sheet, since a format tells their
// measures and not their place.
std::string DrawFormats(const std::vector<ritformattype>& formats);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_FORMATS_DRAWING_H_
