#include "cli/align/placing.h"

#include <cmath>

#include "cli/align/miss.h"

namespace velmora::cli {

std::string StatusText(PlaceStatus status) {
  switch (status) {
    case PlaceStatus::kOn:
      return "on the alignment";
    case PlaceStatus::kOutsideArea:
      return "outside the area";
    case PlaceStatus::kBeforeStart:
      return "before its start";
    case PlaceStatus::kBeyondEnd:
      return "beyond its end";
    case PlaceStatus::kNothing:
      break;
  }
  return "nothing found";
}

Placing LocatePoint(AlignmentInput& input, double northing, double easting, int mode, bool in_area) {
  Placing placing;
  CVaglinje& plan = input.set.plan;
  const bool found = plan.Vagstv(northing, easting, &placing.station, &placing.offset, mode) == 0 &&
                     std::isfinite(placing.station) && placing.station < CVaglinje::Sekkoll;
  if (!found) {
    const Miss miss = WhyMissed(input.plan, {easting, northing});
    placing.status = miss == Miss::kBeforeStart ? PlaceStatus::kBeforeStart
                     : miss == Miss::kBeyondEnd ? PlaceStatus::kBeyondEnd
                                                : PlaceStatus::kNothing;
    return placing;
  }
  const bool outside = in_area && plan.PktIomr(northing, easting, nullptr, nullptr, mode) < 0;
  placing.status = outside ? PlaceStatus::kOutsideArea : PlaceStatus::kOn;
  placing.profile_level = LevelAt(input, placing.station);
  return placing;
}

std::optional<double> LevelAt(AlignmentInput& input, double station) {
  double level = 0;
  if (input.profile.size() < 2 || input.set.profil.Vagprofz(station, &level) < 0 || !std::isfinite(level))
    return std::nullopt;
  return level;
}

}  // namespace velmora::cli
