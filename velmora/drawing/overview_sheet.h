// The first sheets of a report: the whole road with the outlines of its sheets, their index, the legend, and
// the borings that have no place along the road.
#ifndef VELMORA_DRAWING_OVERVIEW_SHEET_H_
#define VELMORA_DRAWING_OVERVIEW_SHEET_H_

#include <optional>
#include <string>
#include <vector>

#include "velmora/drawing/plan_parts.h"
#include "velmora/drawing/report_plan.h"
#include "velmora/drawing/sheet_table.h"

namespace velmora::drawing {

// A boring that no sheet shows at its station, and why.
struct UnplacedBoring {
  const PlotBoring* boring;
  std::string reason;
};
std::vector<UnplacedBoring> UnplacedBorings(const ReportPlan& plan);

class OverviewSheets {
 public:
  // `table_pages` follow the strips.
  OverviewSheets(const ReportPlan& plan, size_t table_pages);
  OverviewSheets(const OverviewSheets&) = delete;
  OverviewSheets& operator=(const OverviewSheets&) = delete;

  size_t Pages() const { return 1 + index_pages_ + unplaced_pages_; }
  // Of the map on the first page; 0 without one.
  double Scale() const;
  // Within the frame of a sheet that was begun.
  void Draw(Canvas& canvas, size_t page, const std::vector<std::string>& notes) const;

 private:
  void DivideFirst();
  std::string IndexCell(size_t row, size_t column) const;
  std::string UnplacedCell(size_t row, size_t column) const;

  const ReportPlan& plan_;
  size_t table_pages_;
  std::vector<UnplacedBoring> unplaced_;
  SheetRect map_{};   // on the first page
  SheetRect side_{};  // there, for the tables
  std::optional<SheetTable> index_;
  std::optional<SheetTable> list_;  // of borings without a place
  bool list_on_first_ = false;
  size_t index_pages_ = 0;  // after the first
  size_t unplaced_pages_ = 0;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_OVERVIEW_SHEET_H_
