#include "velmora/drawing/boring_table.h"

#include <algorithm>
#include <cmath>

#include "velmora/drawing/notes.h"
#include "velmora/drawing/style.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr size_t kFixedColumns = 1;  // the identity is shown in any case

std::vector<TableColumn> ColumnsOf(const ReportTable& table) {
  std::vector<TableColumn> columns;
  for (const ReportColumn& column : table.columns)
    columns.push_back({column.title, column.unit, column.decimals >= 0});
  return columns;
}

}  // namespace

BoringTable::BoringTable(const ReportTable& table, const SheetLayout& layout)
    : table_(table),
      layout_(layout),
      sheets_(
          ColumnsOf(table), kFixedColumns, table.rows.size(),
          [this](size_t row, size_t column) { return Cell(row, column); }, TableArea(layout),
          TableArea(layout)) {}

std::string BoringTable::Cell(size_t row, size_t column) const {
  if (column >= table_.rows[row].size()) return "";
  const ReportCell& cell = table_.rows[row][column];
  if (const auto* text = std::get_if<std::string>(&cell)) return *text;
  const auto* number = std::get_if<double>(&cell);
  if (number == nullptr || !std::isfinite(*number)) return "";
  return FormatFixed(*number, std::clamp(table_.columns[column].decimals, 0, 9));
}

std::vector<std::string> BoringTable::ColumnsLeftOut() const {
  std::vector<std::string> titles;
  for (size_t i = sheets_.Shown(); i < table_.columns.size(); ++i) titles.push_back(table_.columns[i].title);
  return titles;
}

void BoringTable::Draw(Canvas& canvas, size_t page) const {
  const SheetRect area = TableArea(layout_);
  canvas.Text({area.x, area.y - 4}, "Borings",
              {.size = kHeadingSize, .anchor = TextAnchor::kStart, .bold = true}, kTableText);
  sheets_.Draw(canvas, page);
  std::string left_out;
  for (const std::string& title : ColumnsLeftOut()) left_out += (left_out.empty() ? "" : ", ") + title;
  if (left_out.empty()) return;
  Notes notes(layout_.beside.width - 8);
  notes.Add("Columns of the list for which there is no width: " + left_out, 5);
  notes.Draw(canvas, {layout_.beside.x + 4, layout_.beside.y + 2});
}

}  // namespace velmora::drawing
