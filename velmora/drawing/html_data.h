// What the page's script draws: the road and the borings as JSON.
#ifndef VELMORA_DRAWING_HTML_DATA_H_
#define VELMORA_DRAWING_HTML_DATA_H_

#include <string>
#include <string_view>

#include "velmora/drawing/report.h"

namespace velmora::drawing {

// {"km":…, "decimals":…,
//  "plan": [[northing, easting, bulge, station], …], "profile": [[level, station, bulge, station], …],
//  "borings": [[id, northing, easting, level, station, offset, 1 if placed along the road], …],
//  "table": …}
// Points that cannot be drawn are left out; of borings, numbers that cannot are null.
std::string ReportData(const Report& report, std::string_view table);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_HTML_DATA_H_
