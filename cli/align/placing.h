// Map points on an alignment: station, offset and level.
#ifndef VELMORA_CLI_ALIGN_PLACING_H_
#define VELMORA_CLI_ALIGN_PLACING_H_

#include <optional>
#include <string>
#include <vector>

#include "cli/align/alignment_input.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_area.h"
#include "velmora/locator/locator.h"
#include "velmora/locator/road_placer.h"

namespace velmora::cli {

enum class PlaceStatus { kOn, kOutsideArea, kFar, kBeforeStart, kBeyondEnd, kRepeated, kNothing };
inline constexpr size_t kPlaceStatuses = 7;
PlaceStatus StatusOf(OffEnd end);
const char* StatusText(PlaceStatus status);
// Whether there are station and offset.
inline bool HasPlace(PlaceStatus status) { return status <= PlaceStatus::kFar; }

// Why the suite's own programs place a point elsewhere.
enum class Elsewhere { kNowhere, kCornerSide, kArcAxis, kSearchMode };

struct Placing {
  PlaceStatus status = PlaceStatus::kNothing;
  double station = 0;                   // where HasPlace()
  double offset = 0;                    // positive to the right towards higher stations
  std::optional<double> profile_level;  // where there is a profile at the station
  Elsewhere elsewhere = Elsewhere::kNowhere;
};

// Finds points' stations and offsets, many at a time.
class Placer {
 public:
  // `mode` as for CVaglinje::Vagstv, but what mode 1 misses there is found here. Points outside `area` are
  // placed and get kOutsideArea, others whose offset is above `max_offset` kFar. `input` outlives this.
  Placer(AlignmentInput* input, int mode, std::optional<StationArea> area, double max_offset);
  // One road of a network, with search mode 0.
  Placer(std::vector<kovltype> plan, const std::vector<kovltype>& profile, std::optional<StationArea> area,
         double max_offset);

  // Whether Place may run in several threads at once.
  bool IsThreadSafe() const { return mode_ == 0; }
  // A placing for each point of arrays of `count`.
  void Place(const double* northing, const double* easting, size_t count, Placing* placings) const;
  // The placing of a point for which the search of mode 0 found this.
  Placing PlaceFound(double northing, double easting, double station, double offset) const;
  // What the suite's own programs give for a point in this mode.
  std::optional<LinePlace> Searched(double northing, double easting) const;

 private:
  Elsewhere WhyElsewhere(double northing, double easting, const std::optional<LinePlace>& place) const;
  // All but the profile's level.
  Placing PlacingOf(double northing, double easting, double station, double offset, int result) const;

  AlignmentInput* input_ = nullptr;  // for modes 1 and 2
  int mode_;
  std::optional<StationArea> area_;
  double max_offset_;
  RoadPlacer road_;
  std::optional<Locator> profile_;
};

// The points that the suite's own programs place elsewhere.
class Corrections {
 public:
  // Counts a point once; its places on several roads follow each other.
  void Add(std::int64_t line, double northing, double easting, const Placing& placing, const Placer* placer) {
    if (placing.elsewhere == Elsewhere::kNowhere || (count_ > 0 && line == last_line_)) return;
    last_line_ = line;
    if (count_++ == 0) first_ = {line, northing, easting, placing.elsewhere, placer};
  }
  // Those of points further down the list.
  void Add(const Corrections& other) {
    if (count_ == 0) first_ = other.first_;
    count_ += other.count_;
  }
  // One line for people, about the first of them; nothing when there are none.
  std::optional<std::string> Note(const std::string& list, bool km) const;

 private:
  struct Point {
    std::int64_t line;
    double northing;
    double easting;
    Elsewhere why;
    const Placer* placer;
  };
  std::int64_t count_ = 0;
  std::int64_t last_line_ = 0;
  Point first_{};
};

// Of a station that the plan does not place.
PlaceStatus WhyNotPlaced(const AlignmentInput& input, double station);

// Where the plan places stations otherwise than its points and arcs suggest.
class PlaceNotes {
 public:
  PlaceNotes(const AlignmentInput& input, bool km);
  void Add(double station);
  // Prints a line for each of the first few such places that a station was on.
  void Report() const;

 private:
  struct Stretch {
    double low;
    double high;
    std::string note;
    bool met = false;
  };
  std::vector<Stretch> stretches_;
};

// The level of the profile at a station; nothing without one.
std::optional<double> LevelAt(AlignmentInput& input, double station);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_PLACING_H_
