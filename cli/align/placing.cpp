#include "cli/align/placing.h"

#include <cmath>

namespace velmora::cli {

PlaceStatus StatusOf(OffEnd end) {
  return end == OffEnd::kBeforeStart ? PlaceStatus::kBeforeStart
         : end == OffEnd::kBeyondEnd ? PlaceStatus::kBeyondEnd
                                     : PlaceStatus::kNothing;
}

const char* StatusText(PlaceStatus status) {
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

Placer::Placer(AlignmentInput* input, int mode, std::optional<StationArea> area)
    : input_(input), mode_(mode), area_(area) {
  if (mode == 0) plan_.emplace(input->set.plan);
  if (input->profile.size() >= 2) profile_.emplace(input->set.profil);
}

void Placer::Search(const double* northing, const double* easting, size_t count, double* station,
                    double* offset, int* result) const {
  if (plan_) {
    plan_->Vagstv(northing, easting, count, station, offset, result);
    return;
  }
  for (size_t i = 0; i < count; ++i)
    result[i] = input_->set.plan.Vagstv(northing[i], easting[i], &station[i], &offset[i], mode_);
}

void Placer::Place(const double* northing, const double* easting, size_t count, Placing* placings) const {
  std::vector<double> station(count);
  std::vector<double> offset(count);
  std::vector<double> level(count);
  std::vector<int> found(count);
  std::vector<int> has_level(count, -1);
  Search(northing, easting, count, station.data(), offset.data(), found.data());
  if (profile_) profile_->Vagprofz(station.data(), count, level.data(), has_level.data());
  for (size_t i = 0; i < count; ++i) {
    Placing& placing = placings[i];
    placing = {};
    const bool is_station = std::isfinite(station[i]) && station[i] < CVaglinje::Sekkoll;
    if (found[i] < 0 || !is_station) {
      const PlanePoint p{easting[i], northing[i]};
      // Where every vertex was searched, the nearest is an end: any other would have been found.
      placing.status =
          StatusOf(plan_ && found[i] < 0 ? WhyNotFoundAtEnd(input_->plan, p) : WhyNotFound(input_->plan, p));
      continue;
    }
    const bool outside = area_ && !area_->Holds(station[i], offset[i]);
    placing.status = outside ? PlaceStatus::kOutsideArea : PlaceStatus::kOn;
    placing.station = station[i];
    placing.offset = offset[i];
    if (has_level[i] == 0 && std::isfinite(level[i])) placing.profile_level = level[i];
  }
}

std::optional<double> LevelAt(AlignmentInput& input, double station) {
  double level = 0;
  if (input.profile.size() < 2 || input.set.profil.Vagprofz(station, &level) < 0 || !std::isfinite(level))
    return std::nullopt;
  return level;
}

}  // namespace velmora::cli
