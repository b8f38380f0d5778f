// The table of a report as a workbook, through libxlsxwriter.
#ifndef VELMORA_CLI_REPORT_XLSX_TABLE_H_
#define VELMORA_CLI_REPORT_XLSX_TABLE_H_

#include <functional>
#include <string_view>

#include "cli/report/document_facts.h"
#include "velmora/drawing/report.h"

namespace velmora::cli {

// Why this build of the command makes no XLSX, and what to do; null where it does.
const char* WhyNoXlsx();

// One sheet with a line of titles and units that stays in view, and a filter. A number is a number, shown
// with its column's decimals, and a text is a text, also one that begins with "=". `write` receives the file
// in order. The same table and facts give the same bytes. Throws a Refusal for what a workbook cannot hold.
void WriteXlsx(const drawing::ReportTable& table, const DocumentFacts& facts,
               const std::function<void(std::string_view)>& write);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_REPORT_XLSX_TABLE_H_
