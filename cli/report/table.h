// The table of a report's borings.
#ifndef VELMORA_CLI_REPORT_TABLE_H_
#define VELMORA_CLI_REPORT_TABLE_H_

#include <cstddef>
#include <string>
#include <vector>

#include "cli/align/placed_borings.h"
#include "velmora/drawing/report.h"

namespace velmora::cli {

inline constexpr size_t kReportColumns = 10;  // before those of the list

// Of all rows of the list: first those that are points, in its order, then the unreadable ones. With `km` the
// stations are texts.
drawing::ReportTable MakeReportTable(const PlacedBorings& borings, int decimals, bool km);

// The key of a column in CSV: "profile_level" for "Profile level".
}  // namespace velmora::cli

#endif  // VELMORA_CLI_REPORT_TABLE_H_
