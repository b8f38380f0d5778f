// Roads as DXF drawings.
//
// Written is ASCII DXF of release 12 with CR LF, in Windows-1252, which every CAD program reads:
//
//   layer     entities
//   ROAD      one POLYLINE; a VERTEX's bulge (42) shapes the segment that starts there
//   STATIONS  a LINE across the road and a TEXT for each station asked for
//   BORINGS   a POINT at its level, with a TEXT each for name, offset and level
//
// x is easting and y is northing, in metres. Stations and names ride along as extended data of the
// application VELMORA: the name on the POLYLINE, a station on each VERTEX; name, station and offset on each
// POINT. The profile is not written.
//
// Characters that Windows-1252 lacks, and control characters, are written as \U+XXXX. A character above
// U+FFFF has no such form and is refused, and so is a text of more than 255 bytes.
#ifndef VELMORA_EXCHANGE_DXF_H_
#define VELMORA_EXCHANGE_DXF_H_

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/exchange/road.h"
#include "velmora/exchange/sink.h"

namespace velmora::exchange {

// Returns why not, before anything is written; empty when done.
std::string WriteDxf(const ExportInput& input, const Sink& sink);

// Fills its buffer and returns how many bytes it read: 0 at the end, below 0 on an error.
using Source = std::function<std::int64_t(std::span<char>)>;

// Reads ASCII DXF of any release. Each POLYLINE and LWPOLYLINE is a road, and so is each chain of LINEs and
// ARCs that join end to end within 1 mm; it runs as its first LINE in the file does. What is closed, not
// plane, or a SPLINE or ELLIPSE is a road that is refused. With a layer only its entities are read. A road is
// named by its own extended data, else by its layer; equal names get their handles. *problem says why the
// file as a whole is refused; its text is empty otherwise.
std::vector<ImportedRoad> ReadDxf(const Source& source, const ImportOptions& options, Finding* problem);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_DXF_H_
