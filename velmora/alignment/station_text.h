// Stations as people write them: metres, or kilometres and metres.
#ifndef VELMORA_ALIGNMENT_STATION_TEXT_H_
#define VELMORA_ALIGNMENT_STATION_TEXT_H_

#include <optional>
#include <string>
#include <string_view>

namespace velmora {

// "1250.000"; as km "1/250.000". Below zero the sign stands in front of all of it: "-0/012.500".
std::string StationText(double metres, bool km);
// The same without the decimals where they are zero, for the round stations of an axis: "1250", "1/250".
std::string RoundStationText(double metres, bool km);

// Reads both forms, and "1+250" for "1/250"; blanks around it do not count. Behind the "/" stand metres
// from 0 to below 1000. Nothing for any other text.
//
//   ParseStation("1/250.5")   // 1250.5
std::optional<double> ParseStation(std::string_view text);

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_STATION_TEXT_H_
