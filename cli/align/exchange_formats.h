// The formats in which roads come and go, by the ending of the file's name.
#ifndef VELMORA_CLI_ALIGN_EXCHANGE_FORMATS_H_
#define VELMORA_CLI_ALIGN_EXCHANGE_FORMATS_H_

#include <string>
#include <vector>

#include "velmora/exchange/road.h"

namespace velmora::cli {

struct ExchangeFormat {
  const char* ending;  // ".csv"
  bool has_layers;     // --layer applies
  bool has_profile;    // the profile is written

  // Writes the file in one step. `inputs` are the files that the command reads. Returns a note for the user,
  // or nothing. Throws a Refusal.
  std::string (*write)(const exchange::ExportInput& input, const std::string& to,
                       const std::vector<std::string>& inputs);
  // Every alignment of the file, its arcs as they are there. Throws a Refusal for a file that is not of this
  // format.
  std::vector<exchange::ImportedRoad> (*read)(const std::string& file,
                                              const exchange::ImportOptions& options);
};

// ".csv, ..."
std::string ExchangeEndings();

// The format of a file by its name. Throws a Refusal for any other ending, with what to use instead.
const ExchangeFormat& FormatOf(const std::string& file);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_EXCHANGE_FORMATS_H_
