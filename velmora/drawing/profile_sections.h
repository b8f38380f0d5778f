// A profile divided where its reference level has to change.
#ifndef VELMORA_DRAWING_PROFILE_SECTIONS_H_
#define VELMORA_DRAWING_PROFILE_SECTIONS_H_

#include <vector>

#include "velmora/drawing/profile_geometry.h"

namespace velmora::drawing {

struct ProfileSection {
  Interval stations;
  Interval levels;  // no larger than the room
};

// The line within the stations, cut at their ends. The samples are by rising stations.
std::vector<ProfilePoint> CutToStations(const std::vector<ProfilePoint>& samples, const Interval& stations);
// Sections of the line that need at most `room` metres of height each, except where the line is too steep
// for a section of `least` metres.
std::vector<ProfileSection> SectionsOf(const std::vector<ProfilePoint>& line, double room, double least);
// The parts of the line within stations and levels.
std::vector<std::vector<ProfilePoint>> Clip(const std::vector<ProfilePoint>& line, const Interval& stations,
                                            const Interval& levels);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PROFILE_SECTIONS_H_
