#include "cli/align/placing.h"

#include <algorithm>
#include <cmath>

#include "cli/terminal/error.h"
#include "velmora/alignment/station_text.h"

namespace velmora::cli {

namespace {

std::optional<LinePlace> IfFound(int result, double station, double offset) {
  if (result > static_cast<int>(PlaceResult::kCorrected)) return std::nullopt;
  return LinePlace{station, offset};
}

PlaceStatus StatusOf(PlaceResult result) {
  return result == PlaceResult::kBeforeStart ? PlaceStatus::kBeforeStart
         : result == PlaceResult::kBeyondEnd ? PlaceStatus::kBeyondEnd
                                             : PlaceStatus::kNothing;
}

bool IsSamePlace(const std::optional<LinePlace>& a, const std::optional<LinePlace>& b) {
  constexpr double kTolerance = 1e-6;
  if (!a || !b) return a.has_value() == b.has_value();
  return std::fabs(a->station - b->station) < kTolerance && std::fabs(a->offset - b->offset) < kTolerance;
}

const char* ReasonText(Elsewhere why) {
  switch (why) {
    case Elsewhere::kCornerSide:
      return "at a corner they give the side of the straight before it, whatever the direction";
    case Elsewhere::kArcAxis:
      return "beside an axis through an arc's centre they are a quarter of the circle off";
    default:
      return "their search mode 1 misses segments";
  }
}

}  // namespace

PlaceStatus StatusOf(OffEnd end) {
  return end == OffEnd::kBeforeStart ? PlaceStatus::kBeforeStart
         : end == OffEnd::kBeyondEnd ? PlaceStatus::kBeyondEnd
                                     : PlaceStatus::kNothing;
}

const char* StatusText(PlaceStatus status) {
  switch (status) {
    case PlaceStatus::kOn:
      return PlaceText(PlaceResult::kFound);
    case PlaceStatus::kOutsideArea:
      return "outside the area";
    case PlaceStatus::kFar:
      return "far from the road";
    case PlaceStatus::kBeforeStart:
      return PlaceText(PlaceResult::kBeforeStart);
    case PlaceStatus::kBeyondEnd:
      return PlaceText(PlaceResult::kBeyondEnd);
    case PlaceStatus::kRepeated:
      return "station of two points";
    case PlaceStatus::kNothing:
      break;
  }
  return PlaceText(PlaceResult::kNothing);
}

Placer::Placer(AlignmentInput* input, int mode, std::optional<StationArea> area, double max_offset)
    : input_(input), mode_(mode), area_(area), max_offset_(max_offset), road_(input->plan) {
  if (input->profile.size() >= 2) profile_.emplace(input->set.profil);
}

Placer::Placer(std::vector<kovltype> plan, const std::vector<kovltype>& profile,
               std::optional<StationArea> area, double max_offset)
    : mode_(0), area_(area), max_offset_(max_offset), road_(std::move(plan)) {
  if (profile.size() >= 2) profile_.emplace(profile, kProfileType);
}

std::optional<LinePlace> Placer::Searched(double northing, double easting) const {
  double station = 0;
  double offset = 0;
  int found = 0;
  if (mode_ == 0) {
    road_.LocateAsSearched(&northing, &easting, 1, &station, &offset, &found);
    return IfFound(found, station, offset);
  }
  found = input_->set.plan.Vagstv(northing, easting, &station, &offset, mode_);
  if (found < 0 || !std::isfinite(station) || !(station < CVaglinje::Sekkoll)) return std::nullopt;
  return LinePlace{station, offset};
}

Elsewhere Placer::WhyElsewhere(double northing, double easting, const std::optional<LinePlace>& place) const {
  const std::optional<LinePlace> searched = Searched(northing, easting);
  if (IsSamePlace(searched, place)) return Elsewhere::kNowhere;
  if (mode_ == 1) {
    double station = 0;
    double offset = 0;
    int found = 0;
    road_.LocateAsSearched(&northing, &easting, 1, &station, &offset, &found);
    if (!IsSamePlace(searched, IfFound(found, station, offset))) return Elsewhere::kSearchMode;
  }
  const bool is_side = searched && place && std::fabs(searched->station - place->station) < 0.001;
  return is_side ? Elsewhere::kCornerSide : Elsewhere::kArcAxis;
}

void Placer::Place(const double* northing, const double* easting, size_t count, Placing* placings) const {
  std::vector<double> station(count);
  std::vector<double> offset(count);
  std::vector<double> level(count);
  std::vector<int> result(count);
  std::vector<int> has_level(count, -1);
  if (mode_ == 2) {
    for (size_t i = 0; i < count; ++i) {
      result[i] = input_->set.plan.Vagstv(northing[i], easting[i], &station[i], &offset[i], mode_);
      road_.Correct({easting[i], northing[i]}, false, &station[i], &offset[i], &result[i]);
    }
  } else {
    road_.Locate(northing, easting, count, station.data(), offset.data(), result.data());
  }
  if (profile_) profile_->Vagprofz(station.data(), count, level.data(), has_level.data());
  for (size_t i = 0; i < count; ++i) {
    placings[i] = PlacingOf(northing[i], easting[i], station[i], offset[i], result[i]);
    if (HasPlace(placings[i].status) && has_level[i] == 0 && std::isfinite(level[i]))
      placings[i].profile_level = level[i];
  }
}

Placing Placer::PlacingOf(double northing, double easting, double station, double offset, int result) const {
  Placing placing;
  const std::optional<LinePlace> place = IfFound(result, station, offset);
  if (mode_ == 1 || result != static_cast<int>(PlaceResult::kFound))
    placing.elsewhere = WhyElsewhere(northing, easting, place);
  if (!place) {
    placing.status = StatusOf(static_cast<PlaceResult>(result));
    return placing;
  }
  placing.status = area_ && !area_->Holds(place->station, place->offset) ? PlaceStatus::kOutsideArea
                   : std::fabs(place->offset) > max_offset_              ? PlaceStatus::kFar
                                                                         : PlaceStatus::kOn;
  placing.station = place->station;
  placing.offset = place->offset;
  return placing;
}

Placing Placer::PlaceFound(double northing, double easting, double station, double offset) const {
  int result = 0;
  road_.Correct({easting, northing}, true, &station, &offset, &result);
  Placing placing = PlacingOf(northing, easting, station, offset, result);
  double level = 0;
  if (HasPlace(placing.status) && profile_ && profile_->Vagprofz(station, &level) == 0 &&
      std::isfinite(level))
    placing.profile_level = level;
  return placing;
}

std::optional<std::string> Corrections::Note(const std::string& list, bool km) const {
  if (count_ == 0) return std::nullopt;
  const auto searched = first_.placer->Searched(first_.northing, first_.easting);
  std::string text = "the suite's own programs ";
  text += searched ? "give station " + StationText(searched->station, km) + ", offset " +
                         OffsetText(searched->offset)
                   : "find nothing";
  text += std::string(" here: ") + ReasonText(first_.why);
  if (count_ > 1) text += "; " + std::to_string(count_) + " points in all are elsewhere for them";
  return At(list, first_.line, text);
}

PlaceStatus WhyNotPlaced(const AlignmentInput& input, double station) {
  if (RepeatedStation(input.plan, station)) return PlaceStatus::kRepeated;
  return StatusOf(WhyNotFound(input.plan, station));
}

PlaceNotes::PlaceNotes(const AlignmentInput& input, bool km) {
  for (size_t i = 0; i + 1 < input.plan.size(); ++i) {
    const kovltype& a = input.plan[i];
    const kovltype& b = input.plan[i + 1];
    if (Distance(InPlane(a), InPlane(b)) == 0) continue;
    const auto add = [&](double widened, const std::string& what, const std::string& then) {
      std::string note = what + " lines " + std::to_string(input.plan_lines[i]);
      note += " and " + std::to_string(input.plan_lines[i + 1]) + then;
      stretches_.push_back(
          {std::min(a.sek, b.sek) - widened, std::max(a.sek, b.sek) + widened, At(input.file, note)});
    };
    if (std::fabs(a.sek - b.sek) <= kStationTolerance)
      add(kStationTolerance, "station " + StationText(a.sek, km) + " is that of the points in",
          i == 0 ? ", and nothing can be placed between them" : "; it is placed at the first of them");
    else if (RunsTheOtherWay(a, b))
      add(0, "the arc between",
          " is half a circle or more; stations on it are placed on the other side of the circle, where align "
          "locate does not find them");
  }
}

void PlaceNotes::Add(double station) {
  for (Stretch& stretch : stretches_)
    if (station >= stretch.low && station <= stretch.high) stretch.met = true;
}

void PlaceNotes::Report() const {
  int left = 5;
  for (const Stretch& stretch : stretches_)
    if (stretch.met && left-- > 0) Warn(stretch.note);
}

std::optional<double> LevelAt(AlignmentInput& input, double station) {
  double level = 0;
  if (input.profile.size() < 2 || input.set.profil.Vagprofz(station, &level) < 0 || !std::isfinite(level))
    return std::nullopt;
  return level;
}

}  // namespace velmora::cli
