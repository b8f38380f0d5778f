// The texts of the title block from the file of its fields.
#ifndef VELMORA_CLI_REPORT_STAMP_H_
#define VELMORA_CLI_REPORT_STAMP_H_

#include <map>
#include <string>
#include <vector>

#include "cli/report/setup.h"
#include "velmora/drawing/report.h"

namespace velmora::cli {

// A field's second word names what is written, when it is the name of a field; else it is the text itself.
// Texts given by the user for the field come before both. Adds a line to setup->lines for each field. Throws
// a Refusal for a file that cannot be read, and for a given field that it does not have.
std::vector<drawing::StampField> ReadStamp(const std::map<std::string, std::string>& given,
                                           const std::string& road_name, ReportSetup* setup);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_REPORT_STAMP_H_
