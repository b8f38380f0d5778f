// A working area: stations and offsets between limits.
#ifndef VELMORA_ALIGNMENT_STATION_AREA_H_
#define VELMORA_ALIGNMENT_STATION_AREA_H_

namespace velmora {

struct StationArea {
  double station_min = 0;  // m
  double station_max = 0;
  double offset_min = 0;  // the left limit
  double offset_max = 0;

  // Stations have a tolerance of a millimetre, offsets have none.
  bool Holds(double station, double offset) const {
    constexpr double kTolerance = 0.001;
    return !(station < station_min - kTolerance || station > station_max + kTolerance) &&
           !(offset < offset_min || offset > offset_max);
  }
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_STATION_AREA_H_
