// Stations, offsets and lengths as people write them. A station is metres, or kilometres and metres; an
// offset is metres and a side, V (vänster) left and H (höger) right.
#ifndef VELMORA_ALIGNMENT_STATION_TEXT_H_
#define VELMORA_ALIGNMENT_STATION_TEXT_H_

#include <optional>
#include <string>
#include <string_view>

namespace velmora {

// "1250.000"; as km "1/250.000". Below zero the sign comes first: "-0/012.500".
std::string StationText(double metres, bool km);
// The same without the decimals where they are zero, for the round stations of an axis: "1250", "1/250".
std::string RoundStationText(double metres, bool km);

// Reads both forms, and "1+250" for "1/250"; blanks around it are ignored. After the "/" come metres
// from 0 to below 1000. Nothing for any other text.
//
//   ParseStation("1/250.5")   // 1250.5
std::optional<double> ParseStation(std::string_view text);

// "V" or "H"; empty on the alignment itself, to the millimetre.
std::string_view OffsetSide(double offset);
// "H 12.400", "V 3.200", "0.000"
std::string OffsetText(double offset);

// "1250.000 m"
std::string LengthText(double metres);

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_STATION_TEXT_H_
