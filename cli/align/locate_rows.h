// The rows that `align locate` gives: a point as it was listed and where it was found.
#ifndef VELMORA_CLI_ALIGN_LOCATE_ROWS_H_
#define VELMORA_CLI_ALIGN_LOCATE_ROWS_H_

#include <string>
#include <vector>

#include "cli/align/placing.h"
#include "cli/align/point_list.h"
#include "cli/output/records.h"

namespace velmora::cli {

std::vector<Column> LocateColumns();

// `placing` is not looked at for a row that is no point.
std::vector<Cell> LocateCells(const ListedPoint& point, const Placing& placing, bool km);
// The same as a row of CSV, with its line end.
void AppendLocateCsv(const ListedPoint& point, const Placing& placing, bool km, std::string* text);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_LOCATE_ROWS_H_
