// `velmora report`: the sheets, the report and the table of a road and its borings.
#ifndef VELMORA_CLI_REPORT_COMMANDS_H_
#define VELMORA_CLI_REPORT_COMMANDS_H_

#include <map>
#include <optional>
#include <string>

#include "cli/align/commands.h"
#include "cli/input/list_options.h"

namespace velmora::cli {

void AddReportCommand(CLI::App* verb);

// A scale as an option gives it; `largest` is "MAX", the largest standard scale that fits.
struct ScaleOption {
  bool largest = false;
  double denominator = 0;
};

struct ReportOptions {
  std::string file;
  std::string points;  // empty: no borings
  ListOptions list;
  std::string to;    // empty: beside the project's drawings
  std::string form;  // "pdf" and so on; empty: what the name of `to` ends in
  std::string project;
  bool no_project = false;  // the one around the road's file is not used
  std::string format;       // of the sheets; empty: the usual one
  std::optional<ScaleOption> scale;
  std::optional<ScaleOption> height_scale;
  std::optional<Limits> stations;
  std::string stamp;                          // file of the title block's fields
  std::map<std::string, std::string> fields;  // texts of the title block
  std::string author;
  std::string date;
  double max_offset = kMostOffset;
  bool paper = false;  // DXF: sheets instead of map coordinates
  bool km = false;
  bool show = false;  // the values and where they are from, and nothing else
};

void MakeReport(const ReportOptions& options);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_REPORT_COMMANDS_H_
