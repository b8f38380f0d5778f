#include "cli/output/options.h"
#include "cli/terminal/completes.h"

#include <CLI/CLI.hpp>

namespace velmora::cli {

void AddFormatOptions(CLI::App* verb, OutputOptions* options) {
  CLI::Option* csv = verb->add_flag("--csv", options->csv, "Result as CSV");
  CLI::Option* spreadsheet =
      verb->add_flag("--spreadsheet", options->spreadsheet, "Result as CSV for a Swedish spreadsheet");
  verb->add_flag("--json", options->json, "Result as JSON")->excludes(csv)->excludes(spreadsheet);
}

void AddOutputOptions(CLI::App* verb, OutputOptions* options) {
  verb->add_option("-o", options->file,
                   "Write the result to OUT (.csv, .json, .txt: the ending selects the format)")
      ->type_name("OUT")
      ->check(CompletesFile(".csv .json .txt"));
  AddFormatOptions(verb, options);
}

void AddStationOptions(CLI::App* verb, OutputOptions* options) {
  verb->add_flag("--km", options->km, "Stations as km/m (1/250.000)");
}

}  // namespace velmora::cli
