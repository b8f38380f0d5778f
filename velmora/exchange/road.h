// A road as the exchange formats carry it.
#ifndef VELMORA_EXCHANGE_ROAD_H_
#define VELMORA_EXCHANGE_ROAD_H_

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/common/finding.h"

namespace velmora::exchange {

struct Road {
  std::string name;               // UTF-8
  std::vector<kovltype> plan;     // x northing, y easting, bulge, sek station
  std::vector<kovltype> profile;  // x level, y and sek station, bulge; may be empty
};

// A point beside a road, as `align locate` answers it.
struct LocatedPoint {
  std::string id;
  double northing = 0;
  double easting = 0;
  std::optional<double> level;
  std::optional<double> station;  // none where the point is not on the road
  std::optional<double> offset;
  std::optional<double> profile_level;
  std::string status;
  std::vector<std::string> own;  // values of the list's own columns, in the order of their titles
};

struct LocatedPoints {
  std::vector<std::string> own_titles;
  std::vector<LocatedPoint> points;
};

// What an export writes.
struct ExportInput {
  Road road;
  std::vector<double> stations;  // ticks along the road; may be empty
  LocatedPoints borings;         // may be empty
  int srs = 0;                   // code of the spatial reference; 0: undefined
  double chord_error = 0.001;    // m, of arcs that a format also gives as chords
  std::int64_t created = 0;      // the time of the export, in seconds since 1970 UTC
};

// The alignments of a file beyond which it is refused.
inline constexpr size_t kMostRoads = 10'000;
inline constexpr char kTooManyRoads[] = "holds more than 10,000 alignments; give a file with fewer";

// One alignment of an imported file. Every element that was refused or approximated is a finding with its
// line.
struct ImportedRoad {
  Road road;
  bool has_stations = false;  // else `sek` is 0 throughout
  double largest_error = 0;   // m, between the original and `road`
  Findings findings;
  bool refused = false;  // a finding forbids the import
  std::string layer;     // of the GeoPackage that it was read from
};

struct ImportOptions {
  double fit = 0.001;                     // m
  std::optional<double> spirals_as_arcs;  // m; without it a spiral is refused
  std::optional<double> metres_per_foot;  // without it feet are refused
  bool internal_stations = false;         // continuous stations where the file has station equations
  std::string layer;                      // of the alignment, in formats with layers; empty: any
};

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_ROAD_H_
