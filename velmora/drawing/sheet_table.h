// A table on sheets: as many blocks of columns side by side as there is width for, as many pages as it takes.
#ifndef VELMORA_DRAWING_SHEET_TABLE_H_
#define VELMORA_DRAWING_SHEET_TABLE_H_

#include <functional>
#include <string>
#include <vector>

#include "velmora/drawing/canvas.h"

namespace velmora::drawing {

struct TableColumn {
  std::string title;
  std::string unit = {};  // below the title; may be empty
  bool right = false;     // of numbers: aligned at the right
};

class SheetTable {
 public:
  // `cell` gives the text of a row's column. The table takes `first` on its first page and `others` on
  // further ones. At least `required` columns are shown, the others as far as there is width for them.
  SheetTable(std::vector<TableColumn> columns, size_t required, size_t rows,
             std::function<std::string(size_t row, size_t column)> cell, const SheetRect& first,
             const SheetRect& others);

  // 0 for a table without rows.
  size_t Pages() const { return pages_; }
  // Of the first page, from the top of its rectangle.
  double HeightOfFirst() const { return height_of_first_; }
  // The number of columns that are shown, from the left.
  size_t Shown() const { return widths_.size(); }
  void Draw(Canvas& canvas, size_t page) const;

 private:
  // Rows one below the other.
  struct Block {
    size_t page;
    double x;
    double y;
    size_t first_row;
    size_t rows;
    double height;
  };

  void MeasureColumns(size_t required, double width);
  std::vector<std::string> LinesOfCell(size_t row, size_t column) const;
  size_t LinesOf(size_t row) const;
  // Puts rows from `row` on into the rectangle. Returns the first that did not fit.
  size_t FillPage(size_t row, const SheetRect& area);
  void DrawBlock(Canvas& canvas, const Block& block) const;
  double HeadHeight() const;

  std::vector<TableColumn> columns_;
  size_t rows_;
  std::function<std::string(size_t, size_t)> cell_;
  std::vector<double> widths_;  // with the gaps
  double width_ = 0;            // of a block
  std::vector<Block> blocks_;
  size_t pages_ = 0;
  double height_of_first_ = 0;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_SHEET_TABLE_H_
