// The forms in which a report is written.
#ifndef VELMORA_CLI_REPORT_FORMS_H_
#define VELMORA_CLI_REPORT_FORMS_H_

#include <string>
#include <vector>

#include "cli/report/commands.h"
#include "velmora/drawing/report.h"

namespace velmora::cli {

struct ReportForm {
  const char* name;  // the ending of its files, without the dot
  bool one_file;     // else a file a sheet
  bool sheets;       // else the table alone
  // Why this build of the command does not write it; null where it does.
  const char* (*why_not)();
  // Writes the file or files and returns their names. `inputs` are the files that the command reads.
  std::vector<std::string> (*write)(const drawing::Report& report, const ReportOptions& options,
                                    const std::vector<std::string>& inputs, drawing::ReportSummary* summary);
};

// By its name, or by what the file's name ends in; throws a Refusal for a form that there is not.
const ReportForm& FormOf(const ReportOptions& options);
// That of a report whose file the user did not name.
const ReportForm& UsualForm();

}  // namespace velmora::cli

#endif  // VELMORA_CLI_REPORT_FORMS_H_
