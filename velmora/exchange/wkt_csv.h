// Roads as rows of CSV with a column of well-known text (wkt.h), UTF-8.
//
//   kind     road, station or boring
//   name     of the road; the station; the boring's id
//   wkt      COMPOUNDCURVE M or POINT M
//   profile  of the road: a COMPOUNDCURVE of station and level
//
// With borings the columns of their places follow, and then those of their own list.
#ifndef VELMORA_EXCHANGE_WKT_CSV_H_
#define VELMORA_EXCHANGE_WKT_CSV_H_

#include <string>
#include <string_view>
#include <vector>

#include "velmora/exchange/road.h"
#include "velmora/exchange/sink.h"

namespace velmora::exchange {

void WriteWktCsv(const ExportInput& input, const Sink& sink);

// The roads of a file: every row whose column wkt (or geometry, geom) is not a point. Comma, semicolon or
// tab, UTF-8 or Windows-1252. *problem is set and nothing returned when there is no such column or there are
// more than kMostRoads.
std::vector<ImportedRoad> ReadWktCsv(std::string_view bytes, std::string* problem);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_WKT_CSV_H_
