// Options that commands share.
#ifndef VELMORA_CLI_OUTPUT_OPTIONS_H_
#define VELMORA_CLI_OUTPUT_OPTIONS_H_

#include "cli/output/records.h"

namespace CLI {
class App;
}

namespace velmora::cli {

// --csv, --spreadsheet, --json
void AddFormatOptions(CLI::App* verb, OutputOptions* options);
// The same and -o.
void AddOutputOptions(CLI::App* verb, OutputOptions* options);
// --km, where stations are written.
void AddStationOptions(CLI::App* verb, OutputOptions* options);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_OUTPUT_OPTIONS_H_
