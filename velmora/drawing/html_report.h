// The report as one page that needs nothing but a browser: plan and profile to look at, the table of the
// borings, and the sheets, which print to scale.
#ifndef VELMORA_DRAWING_HTML_REPORT_H_
#define VELMORA_DRAWING_HTML_REPORT_H_

#include <span>
#include <string>

#include "velmora/drawing/report.h"

namespace velmora::drawing {

// The whole file. `summary` and `sheets`, each the text of an SVG file, are what DrawReport gave on an
// SvgCanvas. All other texts are escaped; the page's policy allows no script but its own and no request.
// Without scripts the table and the sheets remain.
std::string HtmlReport(const Report& report, const ReportSummary& summary,
                       std::span<const std::string> sheets);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_HTML_REPORT_H_
