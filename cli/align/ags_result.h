// The result of `align locate` as the AGS4 file that the points came from, with their places filled in.
#ifndef VELMORA_CLI_ALIGN_AGS_RESULT_H_
#define VELMORA_CLI_ALIGN_AGS_RESULT_H_

#include <string>
#include <vector>

#include "cli/align/commands.h"
#include "cli/output/output_file.h"
#include "velmora/exchange/ags.h"

namespace velmora::cli {

class AgsResult {
 public:
  // Whether this is what the options ask for. Throws a Refusal when the list is not an AGS file.
  static bool IsWanted(const LocateOptions& options);

  AgsResult(std::string list, std::string alignment)
      : list_(std::move(list)), alignment_(std::move(alignment)) {}

  // In the order of the lines.
  void Add(const exchange::AgsPlace& place) { places_.push_back(place); }
  void Write(OutputFile& output) const;

 private:
  std::string list_;
  std::string alignment_;
  std::vector<exchange::AgsPlace> places_;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_AGS_RESULT_H_
