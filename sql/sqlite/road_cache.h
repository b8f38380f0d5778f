// Roads parsed from the values of SQL calls, kept so that a query parses each road once.
#ifndef SQL_SQLITE_ROAD_CACHE_H_
#define SQL_SQLITE_ROAD_CACHE_H_

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>

#include "velmora/c/velmora.h"

namespace velmora::sql {

// Ends a call with an error of SQL; the name of the function is put before the text.
struct Refusal {
  std::string text;
};

// Throws what a call of the C interface reports; nothing for VELMORA_OK.
void Check(velmora_status status, const velmora_error& error);

struct RoadCloser {
  void operator()(velmora_road* road) const { velmora_road_close(road); }
};
using RoadHandle = std::unique_ptr<velmora_road, RoadCloser>;

struct Point {
  double northing, easting;
};
struct LocateAnswer {
  double station, offset;
  std::int32_t result;  // a velmora_place_result
};

// For one thread at a time, as a connection is.
class Road {
 public:
  // Throws Refusal.
  explicit Road(std::string_view bytes);

  const std::string& Bytes() const { return bytes_; }
  // Keeps the last answer: queries ask for station, offset and level of one point in turn.
  const LocateAnswer& Locate(double northing, double easting);
  // NaN where the profile has no level.
  double Level(double station) const;
  // Of a station and an offset; NaN off the road.
  Point PointAt(double station, double offset) const;
  // A line for each of the first hundred findings; empty without any.
  std::string Findings() const;

 private:
  std::string bytes_;
  RoadHandle road_;
  bool located_ = false;
  Point last_point_{};
  LocateAnswer last_answer_{};
};

// The roads that a connection used last: at most 16, and 64 MB of bytes when there is more than one.
class RoadCache {
 public:
  // Throws Refusal.
  std::shared_ptr<Road> Get(std::string_view bytes);

 private:
  std::list<std::shared_ptr<Road>> roads_;  // the last used first
  std::size_t size_ = 0;
};

}  // namespace velmora::sql

#endif  // SQL_SQLITE_ROAD_CACHE_H_
