// Places of very many points on a road as it is drawn: what the searches give (Locator), corrected where a
// drawing shows another place (alignment/drawn_place.h).
#ifndef VELMORA_LOCATOR_ROAD_PLACER_H_
#define VELMORA_LOCATOR_ROAD_PLACER_H_

#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "velmora/alignment/drawn_place.h"
#include "velmora/alignment/measures.h"
#include "velmora/locator/locator.h"
#include "velmora/locator/station_index.h"

namespace velmora {

enum class PlaceResult : int {
  kFound = 0,
  kCorrected = 1,  // found; the suite's own programs place the point elsewhere, or nowhere
  kBeforeStart = 2,
  kBeyondEnd = 3,
  kNothing = 4,
};

// For a user: "on the alignment", "before its start", ...
const char* PlaceText(PlaceResult result);

// Immutable, and safe to use from many threads at once.
class RoadPlacer {
 public:
  explicit RoadPlacer(std::vector<kovltype> plan);

  // Map points to stations and offsets, for arrays of `count` that do not overlap; offsets are positive to
  // the right towards higher stations. Each `result` is a PlaceResult; without a place, station and offset
  // are NaN.
  void Locate(const double* northing, const double* easting, size_t count, double* station, double* offset,
              int* result) const;
  // The answers of CVaglinje::Vagstv with search mode 0.
  void LocateAsSearched(const double* northing, const double* easting, size_t count, double* station,
                        double* offset, int* result) const;
  // Turns a search's answer for one point into the drawn line's, as Locate. `result` is 0 or -1 before;
  // `vertices` whether the search looked at them.
  void Correct(PlanePoint p, bool vertices, double* station, double* offset, int* result) const;

  // Stations and offsets to map points, the inverse of Locate where stations follow the lengths; elsewhere a
  // station is placed by its share of those of the segment's ends. Stations within 0.1 mm of either end still
  // count as on the road. Where stations fall, and on arcs from half a circle, CVaglinje::Vag2xy gives other
  // points.
  void Place(const double* station, const double* offset, size_t count, double* northing, double* easting,
             int* result) const;

  const std::vector<kovltype>& Plan() const { return plan_; }

 private:
  void Answer(PlanePoint p, bool drawn, bool vertices, double* station, double* offset, int* result) const;

  // Made when it is first asked: of the roads of a network few are.
  const Locator& Searched() const;

  std::vector<kovltype> plan_;
  bool descending_;
  DrawnPlaces drawn_;
  StationIndex stations_;
  struct Made {
    std::once_flag once;
    std::optional<Locator> locator;
  };
  std::unique_ptr<Made> made_;
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_ROAD_PLACER_H_
