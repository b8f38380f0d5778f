#include "cli/report/xlsx_table.h"
#include "cli/terminal/error.h"

namespace velmora::cli {

const char* WhyNoXlsx() {
  return "this build of velmora has no libxlsxwriter, which XLSX needs; choose a name that ends in .csv";
}

void WriteXlsx(const drawing::ReportTable&, const DocumentFacts&,
               const std::function<void(std::string_view)>&) {
  throw Refusal(WhyNoXlsx());
}

}  // namespace velmora::cli
