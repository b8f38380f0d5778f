// What a report is made with: each value from the command line, else from the project's parameter files, else
// the usual one.
#ifndef VELMORA_CLI_REPORT_SETUP_H_
#define VELMORA_CLI_REPORT_SETUP_H_

#include <optional>
#include <string>
#include <vector>

#include "cli/report/commands.h"
#include "velmora/drawing/report.h"

namespace velmora::cli {

// A value with where it came from, for people.
struct SetupLine {
  std::string key;
  std::string value;
  std::string from;
};

struct ReportSetup {
  drawing::SheetSetup sheets;
  std::string project;         // its folder; empty for none
  std::string drawing_folder;  // of the project, for drawings; empty without one
  std::string stamp_file;      // empty for the command's own title block
  std::string date;
  std::string author;
  std::vector<SetupLine> lines;
};

// Of "1000", "1:1000" or "MAX" in any case; nothing for what is not a scale.
std::optional<ScaleOption> ParseScale(const std::string& text);

// Throws a Refusal for a value that cannot be used.
ReportSetup FindReportSetup(const ReportOptions& options);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_REPORT_SETUP_H_
