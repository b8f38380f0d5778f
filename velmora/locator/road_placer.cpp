#include "velmora/locator/road_placer.h"

#include <cmath>
#include <limits>
#include <utility>

#include "velmora/alignment/alignment_format.h"

namespace velmora {
namespace {

constexpr double kNowhere = std::numeric_limits<double>::quiet_NaN();

void Without(OffEnd end, double* first, double* second, int* result) {
  *first = *second = kNowhere;
  *result = static_cast<int>(end == OffEnd::kBeforeStart ? PlaceResult::kBeforeStart
                             : end == OffEnd::kBeyondEnd ? PlaceResult::kBeyondEnd
                                                         : PlaceResult::kNothing);
}

}  // namespace

const char* PlaceText(PlaceResult result) {
  switch (result) {
    case PlaceResult::kFound:
    case PlaceResult::kCorrected:
      return "on the alignment";
    case PlaceResult::kBeforeStart:
      return "before its start";
    case PlaceResult::kBeyondEnd:
      return "beyond its end";
    default:
      return "nothing found";
  }
}

RoadPlacer::RoadPlacer(std::vector<kovltype> plan)
    : plan_(std::move(plan)),
      descending_(IsDescending(plan_)),
      drawn_(plan_),
      stations_(PlanStations(plan_)),
      made_(std::make_unique<Made>()) {}

const Locator& RoadPlacer::Searched() const {
  std::call_once(made_->once, [this] { made_->locator.emplace(plan_, kPlanType); });
  return *made_->locator;
}

void RoadPlacer::Answer(PlanePoint p, bool drawn, bool vertices, double* station, double* offset,
                        int* result) const {
  const bool searched = *result >= 0;
  *result = static_cast<int>(PlaceResult::kFound);
  std::optional<LinePlace> place;
  if (searched && std::isfinite(*station) && *station < CVaglinje::Sekkoll)
    place = LinePlace{*station, *offset};
  if (drawn && drawn_.MayDiffer(p) && drawn_.Correct(p, vertices, &place))
    *result = static_cast<int>(PlaceResult::kCorrected);
  if (place) {
    *station = place->station;
    *offset = place->offset;
    return;
  }
  // Where every vertex was searched, the nearest is an end: any other would have been found.
  const bool at_end = vertices && !searched;
  Without(at_end ? WhyNotFoundAtEnd(plan_, p) : WhyNotFound(plan_, p), station, offset, result);
}

void RoadPlacer::Correct(PlanePoint p, bool vertices, double* station, double* offset, int* result) const {
  Answer(p, true, vertices, station, offset, result);
}

void RoadPlacer::Locate(const double* northing, const double* easting, size_t count, double* station,
                        double* offset, int* result) const {
  Searched().Vagstv(northing, easting, count, station, offset, result);
  for (size_t i = 0; i < count; ++i)
    Answer({easting[i], northing[i]}, true, true, &station[i], &offset[i], &result[i]);
}

void RoadPlacer::LocateAsSearched(const double* northing, const double* easting, size_t count,
                                  double* station, double* offset, int* result) const {
  Searched().Vagstv(northing, easting, count, station, offset, result);
  for (size_t i = 0; i < count; ++i)
    Answer({easting[i], northing[i]}, false, true, &station[i], &offset[i], &result[i]);
}

void RoadPlacer::Place(const double* station, const double* offset, size_t count, double* northing,
                       double* easting, int* result) const {
  for (size_t i = 0; i < count; ++i) {
    const std::optional<size_t> segment = SegmentAtStation(plan_, stations_, station[i]);
    if (!segment) {
      Without(plan_.empty() ? OffEnd::kNeither : WhyNotFound(plan_, station[i]), &northing[i], &easting[i],
              &result[i]);
      continue;
    }
    const PlanePoint p =
        DrawnPoint(plan_[*segment], plan_[*segment + 1], station[i], descending_ ? -offset[i] : offset[i]);
    northing[i] = p.v;
    easting[i] = p.h;
    result[i] = static_cast<int>(PlaceResult::kFound);
    if (!std::isfinite(p.v) || !std::isfinite(p.h))
      Without(OffEnd::kNeither, &northing[i], &easting[i], &result[i]);
  }
}

}  // namespace velmora
