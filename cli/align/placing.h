// One point on an alignment: what the library finds for it.
#ifndef VELMORA_CLI_ALIGN_PLACING_H_
#define VELMORA_CLI_ALIGN_PLACING_H_

#include <optional>
#include <string>

#include "cli/align/alignment_input.h"

namespace velmora::cli {

enum class PlaceStatus { kOn, kOutsideArea, kBeforeStart, kBeyondEnd, kNothing };
std::string StatusText(PlaceStatus status);

struct Placing {
  PlaceStatus status = PlaceStatus::kNothing;
  double station = 0;  // kOn and kOutsideArea
  double offset = 0;
  std::optional<double> profile_level;  // where there is a profile at the station
};

// Station and offset of a map point, held to the plan's working area when `in_area` is set.
Placing LocatePoint(AlignmentInput& input, double northing, double easting, int mode, bool in_area);

// The level of the profile at a station; nothing without one.
std::optional<double> LevelAt(AlignmentInput& input, double station);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_PLACING_H_
