// The elements of LandXML that make a road, as they stand in a file, and the way from them to a road.
#ifndef VELMORA_EXCHANGE_LANDXML_ELEMENTS_H_
#define VELMORA_EXCHANGE_LANDXML_ELEMENTS_H_

#include <cmath>
#include <cstdint>
#include <deque>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "velmora/exchange/road.h"

namespace velmora::exchange {

// An attribute that is not given.
inline constexpr double kNotGiven = std::numeric_limits<double>::quiet_NaN();
inline bool IsGiven(double value) { return !std::isnan(value); }

// Of coordinates, stations and levels, in the file's unit.
inline constexpr double kFarthest = 1e10;
inline constexpr char kNoCoordinates[] = " has no coordinates: two numbers up to 1e10";

// Of a plan or of a point list.
struct LandPoint {
  double north = kNotGiven;
  double east = kNotGiven;
  int reference = -1;  // number of a point's name

  bool IsKnown() const { return IsGiven(north) && IsGiven(east); }
};

enum class LandKind : std::uint8_t { kLine, kCurve, kSpiral, kIrregularLine, kChain };

struct LandElement {
  LandKind kind = LandKind::kLine;
  std::int64_t line = 0;
  bool clockwise = false;
  bool is_clothoid = false;
  LandPoint start;
  LandPoint centre;
  LandPoint end;
  LandPoint intersection;      // PI of a spiral
  double station = kNotGiven;  // staStart
  double length = kNotGiven;
  double radius = kNotGiven;  // of a curve; of a spiral at its start, where it may be infinite
  double radius_end = kNotGiven;
  double direction = kNotGiven;                  // dir of a line, dirStart of others
  double direction_end = kNotGiven;              // dirEnd
  double theta = kNotGiven;                      // of a spiral
  std::unique_ptr<std::vector<LandPoint>> list;  // of an irregular line and a chain
};

enum class LandVertical : std::uint8_t { kPoint, kParabola, kTwoParabolas, kCircle };

// A point of vertical intersection.
struct LandLevel {
  LandVertical kind = LandVertical::kPoint;
  std::int64_t line = 0;
  double station = kNotGiven;
  double level = kNotGiven;
  double length = kNotGiven;  // of the first of two parabolas, else of the curve
  double length_out = kNotGiven;
  double radius = kNotGiven;
};

struct LandEquation {
  std::int64_t line = 0;
  std::string text;  // the attributes, for a message
};

struct LandAlignment {
  std::int64_t line = 0;
  double station = kNotGiven;      // staStart
  double station_end = kNotGiven;  // of our own exports, whose stations need not follow the lengths
  std::int64_t station_end_line = 0;
  std::deque<LandElement> elements;  // large and very many: not copied while they grow
  std::vector<LandLevel> levels;
  std::vector<LandEquation> equations;
  ImportedRoad road;  // name and findings so far
};

struct LandUnits {
  std::int64_t line = 0;
  std::string linear;            // "meter", "foot"; empty where the file does not say
  double radians_per_unit = 1;   // of directions; 0: degrees, minutes and seconds as 45.3025
  double radians_per_angle = 1;  // of other angles, likewise
};

// Makes the road of an alignment whose points are all known.
void MakeRoad(const LandUnits& units, const ImportOptions& options, LandAlignment* alignment);
// Its two halves; `metres` is the length of the file's unit.
void MakePlan(const LandUnits& units, double metres, const ImportOptions& options, LandAlignment* alignment);
void MakeProfile(double metres, const ImportOptions& options, LandAlignment* alignment);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_LANDXML_ELEMENTS_H_
