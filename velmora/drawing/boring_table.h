// The last sheets of a report: the table of the borings.
#ifndef VELMORA_DRAWING_BORING_TABLE_H_
#define VELMORA_DRAWING_BORING_TABLE_H_

#include <string>
#include <vector>

#include "velmora/drawing/report.h"
#include "velmora/drawing/sheet_layout.h"
#include "velmora/drawing/sheet_table.h"

namespace velmora::drawing {

class BoringTable {
 public:
  BoringTable(const ReportTable& table, const SheetLayout& layout);
  BoringTable(const BoringTable&) = delete;
  BoringTable& operator=(const BoringTable&) = delete;

  size_t Pages() const { return sheets_.Pages(); }
  // Those for which there is no width.
  std::vector<std::string> ColumnsLeftOut() const;
  // Within the frame of a sheet that was begun.
  void Draw(Canvas& canvas, size_t page) const;

 private:
  std::string Cell(size_t row, size_t column) const;

  const ReportTable& table_;
  SheetLayout layout_;
  SheetTable sheets_;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_BORING_TABLE_H_
