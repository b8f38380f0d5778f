// The formats in which roads come and go, as the commands use them.
#ifndef VELMORA_CLI_ALIGN_EXCHANGE_FORMATS_H_
#define VELMORA_CLI_ALIGN_EXCHANGE_FORMATS_H_

#include <string>
#include <vector>

#include "velmora/exchange/road_formats.h"

namespace velmora::cli {

// The format of a file by its name. Throws a Refusal for an ending of none, with what to use instead.
const exchange::RoadFormat& FormatOf(const std::string& file);

// Every alignment of the file. Throws a Refusal for a file that is not of this format.
std::vector<exchange::ImportedRoad> ReadRoads(const exchange::RoadFormat& format, const std::string& file,
                                              const exchange::ImportOptions& options);
// Writes the file in one step. `inputs` are the files that the command reads. Returns a note for the user, or
// nothing. Throws a Refusal.
std::string WriteRoad(const exchange::RoadFormat& format, const exchange::ExportInput& input,
                      const std::string& to, const std::vector<std::string>& inputs);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_EXCHANGE_FORMATS_H_
