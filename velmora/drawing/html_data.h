// The content of a page: the table of the borings as an element, and as JSON what the script draws and
// filters.
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

struct HtmlTable {
  std::string text;  // the element, readable without a script
  // For the script: {"columns": [[title, unit, 1 if of numbers], …], "rows": [[text, …], …]}
  std::string data;
  size_t left_out = 0;  // numbers that are not finite, or too large to be written; their cells are empty
};

HtmlTable TableOfBorings(const ReportTable& table);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_HTML_DATA_H_
