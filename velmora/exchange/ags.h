// Points of AGS4 files (data transfer of ground investigations): group LOCA.
//
//   "GROUP","LOCA"
//   "HEADING","LOCA_ID","LOCA_NATE","LOCA_NATN","LOCA_GL"
//   "UNIT","","m","m","m"
//   "TYPE","ID","2DP","2DP","2DP"
//   "DATA","BH1","674060.00","6580050.00","12.50"
//
// UTF-8, lines that are not as Windows-1252; CR LF or LF.
#ifndef VELMORA_EXCHANGE_AGS_H_
#define VELMORA_EXCHANGE_AGS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/exchange/road.h"
#include "velmora/exchange/sink.h"

namespace velmora::exchange {

// Of LOCA. The local grid LOCA_LOCX, LOCA_LOCY is read only when it is named here.
struct AgsColumns {
  std::string easting = "LOCA_NATE";
  std::string northing = "LOCA_NATN";
  std::string level = "LOCA_GL";
};

struct AgsRow {
  LocatedPoint point;  // `own` in the order of own_titles, as far as the row goes
  std::int64_t line = 0;
  std::string problem;  // why it is not a point; empty for one
};

struct AgsList {
  std::vector<std::string> own_titles;  // the other headings of LOCA
  std::vector<AgsRow> rows;             // every DATA row of LOCA, in order
  Finding problem;                      // why there is no list; its text is empty otherwise
};
AgsList ReadAgs(std::string_view bytes, const AgsColumns& columns = {});

// Writes the file again with LOCA_ALID (the alignment's name), LOCA_OFFS and LOCA_CNGE filled in the rows
// that have a station, with the decimals that their TYPE says; every other byte is as it was. Headings that
// are missing are added where the standard's order has them. `rows` are those of ReadAgs, stations and
// offsets set.
void WriteAgs(std::string_view bytes, const std::string& alignment, const std::vector<AgsRow>& rows,
              const Sink& sink);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_AGS_H_
