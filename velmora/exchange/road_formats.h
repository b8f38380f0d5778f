// The formats in which roads come and go, by the ending of the file's name. Nothing is shown.
#ifndef VELMORA_EXCHANGE_ROAD_FORMATS_H_
#define VELMORA_EXCHANGE_ROAD_FORMATS_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/exchange/road.h"
#include "velmora/exchange/sink.h"
#include "velmora/text/string.h"

namespace velmora::exchange {

struct RoadFormat {
  const char* ending;  // ".csv"
  bool has_layers;     // ImportOptions::layer applies
  bool has_profile;    // the profile is written

  // Returns why the format cannot hold the road, before anything is written; empty when done. *note is then
  // what the user should know, or empty.
  std::string (*write)(const ExportInput& input, const Sink& sink, std::string* note);
  // Every alignment of the file, its arcs as they are there. Why the file as a whole is refused, with the
  // line where there is one.
  std::optional<Finding> (*read)(const CString& path, const ImportOptions& options,
                                 std::vector<ImportedRoad>* roads);
};

// The format for an ending, in small letters. Null for any other; *why then says why, where the ending is of
// a format that cannot hold a road.
const RoadFormat* RoadFormatOf(std::string_view ending, std::string* why);
// ".xml, ..."
std::string RoadFormatEndings();

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_ROAD_FORMATS_H_
