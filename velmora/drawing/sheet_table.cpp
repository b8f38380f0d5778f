#include "velmora/drawing/sheet_table.h"

#include <algorithm>

#include "velmora/drawing/labels.h"
#include "velmora/drawing/style.h"

namespace velmora::drawing {
namespace {

constexpr double kSize = 2.2;         // mm, of the text
constexpr double kRowPitch = 3.6;     // of rows
constexpr double kCellGap = 3;        // between columns
constexpr double kBlockGap = 6;       // between blocks side by side
constexpr double kWidest = 50;        // of a column; longer texts are wrapped
constexpr size_t kMostCellLines = 3;  // of a cell
constexpr double kBold = 1.12;        // times as wide
constexpr size_t kMostPages = 5000;

}  // namespace

SheetTable::SheetTable(std::vector<TableColumn> columns, size_t required, size_t rows,
                       std::function<std::string(size_t, size_t)> cell, const SheetRect& first,
                       const SheetRect& others)
    : columns_(std::move(columns)), rows_(rows), cell_(std::move(cell)) {
  if (rows_ == 0 || columns_.empty()) return;
  MeasureColumns(required, std::min(first.width, others.width));
  for (size_t row = 0; row < rows_ && pages_ < kMostPages; ++pages_)
    row = FillPage(row, pages_ == 0 ? first : others);
  for (const Block& block : blocks_)
    if (block.page == 0) height_of_first_ = std::max(height_of_first_, block.height);
}

void SheetTable::MeasureColumns(size_t required, double width) {
  std::vector<double> widths;
  for (size_t column = 0; column < columns_.size(); ++column) {
    double widest =
        kBold * std::max(TextWidth(columns_[column].title, kSize), TextWidth(columns_[column].unit, kSize));
    for (size_t row = 0; row < rows_ && widest < kWidest; ++row)
      widest = std::max(widest, TextWidth(cell_(row, column), kSize));
    widths.push_back(std::min(widest, kWidest) + kCellGap);
  }
  for (size_t column = 0; column < widths.size(); ++column) {
    const double rest = width - width_;
    if (column >= required && widths[column] > rest) break;
    widths_.push_back(std::min(widths[column], std::max(rest, kSize + kCellGap)));
    width_ += widths_.back();
  }
  // A narrower column may make room for a second block.
  constexpr double kNarrowest = 26;
  const auto widest = std::max_element(widths_.begin(), widths_.end());
  const double excess = width_ - (width - kBlockGap) / 2;
  if (excess <= 0 || *widest - excess < kNarrowest) return;
  *widest -= excess;
  width_ -= excess;
}

double SheetTable::HeadHeight() const {
  const auto has_unit = [](const TableColumn& column) { return !column.unit.empty(); };
  return std::any_of(columns_.begin(), columns_.end(), has_unit) ? 8.5 : 5.5;
}

std::vector<std::string> SheetTable::LinesOfCell(size_t row, size_t column) const {
  constexpr double kRounding = 0.01;  // mm; the longest text of a column has its width
  return WrapText(cell_(row, column), kSize, widths_[column] - kCellGap + kRounding, kMostCellLines);
}

size_t SheetTable::LinesOf(size_t row) const {
  size_t lines = 1;
  for (size_t column = 0; column < widths_.size(); ++column)
    lines = std::max(lines, LinesOfCell(row, column).size());
  return lines;
}

size_t SheetTable::FillPage(size_t row, const SheetRect& area) {
  const auto side_by_side = std::max<size_t>(
      1, static_cast<size_t>(std::max(0.0, (area.width + kBlockGap) / (width_ + kBlockGap))));
  for (size_t i = 0; i < side_by_side && row < rows_; ++i) {
    Block block = {pages_,      area.x + static_cast<double>(i) * (width_ + kBlockGap), area.y, row, 0,
                   HeadHeight()};
    while (row < rows_) {
      const double height = static_cast<double>(LinesOf(row)) * kRowPitch;
      if (block.rows > 0 && block.height + height > area.height) break;
      block.height += height;
      ++block.rows;
      ++row;
    }
    blocks_.push_back(block);
  }
  return row;
}

void SheetTable::Draw(Canvas& canvas, size_t page) const {
  for (const Block& block : blocks_)
    if (block.page == page) DrawBlock(canvas, block);
}

void SheetTable::DrawBlock(Canvas& canvas, const Block& block) const {
  double x = block.x;
  const auto write = [&](size_t column, double y, const std::string& text, bool bold) {
    const bool right = columns_[column].right;
    const double at = right ? x + widths_[column] - kCellGap / 2 : x + kCellGap / 2;
    canvas.Text({at, y}, text,
                {.size = kSize, .anchor = right ? TextAnchor::kEnd : TextAnchor::kStart, .bold = bold},
                kTableText);
  };
  for (size_t column = 0; column < widths_.size(); ++column) {
    const double room = (widths_[column] - kCellGap) / kBold;
    write(column, block.y + 2.4, FitText(columns_[column].title, kSize, room + 0.01), true);
    if (!columns_[column].unit.empty())
      write(column, block.y + 5.6, FitText(columns_[column].unit, kSize, room), false);
    x += widths_[column];
  }
  double y = block.y + HeadHeight() - 0.6;
  canvas.Line({block.x, y}, {block.x + width_, y}, kTableLine);
  y += 0.6;
  for (size_t row = block.first_row; row < block.first_row + block.rows; ++row) {
    x = block.x;
    size_t lines = 1;
    for (size_t column = 0; column < widths_.size(); ++column) {
      const auto texts = LinesOfCell(row, column);
      for (size_t i = 0; i < texts.size(); ++i)
        write(column, y + kRowPitch * (static_cast<double>(i) + 0.5), texts[i], false);
      lines = std::max(lines, texts.size());
      x += widths_[column];
    }
    y += static_cast<double>(lines) * kRowPitch;
    canvas.Line({block.x, y}, {block.x + width_, y}, kGrid);
  }
}

}  // namespace velmora::drawing
