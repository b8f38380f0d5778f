// The table of the borings as part of a page.
#ifndef VELMORA_DRAWING_HTML_TABLE_H_
#define VELMORA_DRAWING_HTML_TABLE_H_

#include <string>

#include "velmora/drawing/report.h"

namespace velmora::drawing {

struct HtmlTable {
  std::string text;  // the element, readable without a script
  std::string
      data;  // for the script: {"columns": [[title, unit, 1 if of numbers], …], "rows": [[text, …], …]}
  size_t left_out = 0;  // numbers that are not finite, or too large to be written; their cells are empty
};

HtmlTable TableOfBorings(const ReportTable& table);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_HTML_TABLE_H_
