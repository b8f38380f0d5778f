// The drawing of an alignment as one sheet, A3 landscape: plan, profile and title block, and below them,
// where borings have numbers for labels, the key to these, by which the sheet is higher.
#ifndef VELMORA_DRAWING_ALIGNMENT_SHEET_H_
#define VELMORA_DRAWING_ALIGNMENT_SHEET_H_

#include <optional>
#include <string>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/drawing/canvas.h"

namespace velmora::drawing {

struct PlotBoring {
  std::string id;  // UTF-8
  double northing = 0;
  double easting = 0;
  std::optional<double> level;
  bool placed = false;  // along the road: station and offset are valid
  double station = 0;
  double offset = 0;        // positive to the right
  bool too_far = false;     // not placed, as its offset, which is valid, is too large
  std::string status = {};  // why it is not placed, for people; may be empty

  bool HasOffset() const { return placed || too_far; }
};

struct PlotInput {
  std::string name;  // of the road, UTF-8; may be empty
  std::string file;  // where it was read from, UTF-8; may be empty
  std::vector<kovltype> plan;
  std::vector<kovltype> profile;  // by rising station, as the level look-up needs it
  std::vector<PlotBoring> borings;
  double max_offset = 0;  // m, beyond which borings are `too_far`
  bool km_stations = false;
};

// The largest coordinate, station or level that is drawn; points beyond it, or not finite, are left out and
// their number is noted on the sheet.
inline constexpr double kLargestDrawn = 1e9;  // m

// Begins the sheet and draws it. Any input gives a drawing, if need be one that says there is nothing to
// draw.
void DrawAlignment(const PlotInput& input, Canvas& canvas);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_ALIGNMENT_SHEET_H_
