// Map points on an alignment: station, offset and level.
#ifndef VELMORA_CLI_ALIGN_PLACING_H_
#define VELMORA_CLI_ALIGN_PLACING_H_

#include <optional>
#include <string>

#include "cli/align/alignment_input.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_area.h"
#include "velmora/locator/locator.h"

namespace velmora::cli {

enum class PlaceStatus { kOn, kOutsideArea, kBeforeStart, kBeyondEnd, kNothing };
PlaceStatus StatusOf(OffEnd end);
const char* StatusText(PlaceStatus status);

struct Placing {
  PlaceStatus status = PlaceStatus::kNothing;
  double station = 0;  // kOn and kOutsideArea
  double offset = 0;
  std::optional<double> profile_level;  // where there is a profile at the station
};

// Finds points' stations and offsets, many at a time.
class Placer {
 public:
  // `mode` as for CVaglinje::Vagstv. Points outside `area` are placed and get kOutsideArea. `input`
  // outlives this.
  Placer(AlignmentInput* input, int mode, std::optional<StationArea> area);

  // Whether Place may run in several threads at once.
  bool IsThreadSafe() const { return mode_ == 0; }
  // A placing for each point of arrays of `count`.
  void Place(const double* northing, const double* easting, size_t count, Placing* placings) const;

 private:
  void Search(const double* northing, const double* easting, size_t count, double* station, double* offset,
              int* result) const;

  AlignmentInput* input_;
  int mode_;
  std::optional<StationArea> area_;
  std::optional<Locator> plan_;  // for mode 0
  std::optional<Locator> profile_;
};

// The level of the profile at a station; nothing without one.
std::optional<double> LevelAt(AlignmentInput& input, double station);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_PLACING_H_
