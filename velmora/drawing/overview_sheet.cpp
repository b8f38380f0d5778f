#include "velmora/drawing/overview_sheet.h"

#include <algorithm>
#include <cmath>

#include "velmora/alignment/station_text.h"
#include "velmora/drawing/legend.h"
#include "velmora/drawing/overview_map.h"
#include "velmora/text/counted.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kOverviewInset = 4;    // mm
constexpr double kOverviewHeading = 6;  // above a table
constexpr double kMostAside = 0.5;      // of the width, for the tables
constexpr double kIndexWidth = 84;      // of a block
constexpr double kListWidth = 110;
constexpr double kIndexRow = 3.6;
constexpr double kLeastList = 40;  // mm, below the index

void Heading(Canvas& canvas, double x, double y, const std::string& text) {
  canvas.Text({x, y}, text, {.size = kHeadingSize, .anchor = TextAnchor::kStart, .bold = true}, kTableText);
}

std::string SheetsText(size_t first, size_t count) {
  return std::to_string(first) + (count > 1 ? " to " + std::to_string(first + count - 1) : "");
}

}  // namespace

std::vector<UnplacedBoring> UnplacedBorings(const ReportPlan& plan) {
  std::vector<UnplacedBoring> unplaced;
  const PlotInput& road = plan.report.road;
  for (const PlotBoring& boring : road.borings) {
    if (boring.placed) continue;
    if (boring.too_far)
      unplaced.push_back(
          {&boring, "offset " + OffsetLabel(boring) + ", more than " + PlainNumber(road.max_offset) + " m"});
    else
      unplaced.push_back({&boring, boring.status.empty() ? "no place along the road" : boring.status});
  }
  if (plan.too_many) return unplaced;
  for (const PlotBoring* boring : plan.nowhere)
    unplaced.push_back(
        {boring, "station " + StationText(boring->station, road.km_stations) + " is on no sheet"});
  return unplaced;
}

OverviewSheets::OverviewSheets(const ReportPlan& plan, size_t table_pages)
    : plan_(plan), table_pages_(table_pages), unplaced_(UnplacedBorings(plan)) {
  DivideFirst();
  const SheetRect other = TableArea(plan.layout);
  const size_t rows = 1 + plan.strips.size() + (table_pages > 0 ? 1 : 0);
  SheetRect first = {side_.x, side_.y + kOverviewHeading, side_.width, side_.height - kOverviewHeading};
  if (!unplaced_.empty()) first.height -= kLeastList;
  index_.emplace(
      std::vector<TableColumn>{{"Sheet", "", true}, {"From", "", true}, {"To", "", true}, {"Content"}}, 4,
      rows, [this](size_t row, size_t column) { return IndexCell(row, column); }, first, other);
  index_pages_ = index_->Pages() - 1;
  if (unplaced_.empty()) return;
  const double y = first.y + index_->HeightOfFirst() + 4;
  SheetRect below = {side_.x, y + kOverviewHeading, side_.width, side_.Bottom() - y - kOverviewHeading};
  list_on_first_ = index_pages_ == 0;
  list_.emplace(
      std::vector<TableColumn>{{"Boring"}, {"Northing", "", true}, {"Easting", "", true}, {"Why"}}, 4,
      unplaced_.size(), [this](size_t row, size_t column) { return UnplacedCell(row, column); },
      list_on_first_ ? below : other, other);
  unplaced_pages_ = list_->Pages() - (list_on_first_ ? 1 : 0);
}

double OverviewSheets::Scale() const { return ScaleOfOverview(map_, plan_); }

void OverviewSheets::DivideFirst() {
  const SheetLayout& layout = plan_.layout;
  const SheetRect all = {layout.frame.x + kOverviewInset, layout.frame.y + kOverviewInset,
                         layout.frame.width - 2 * kOverviewInset,
                         layout.beside.y - layout.frame.y - 2 * kOverviewInset};
  const double rows = static_cast<double>(plan_.strips.size() + 2);
  if (all.width > all.height) {
    const double blocks =
        std::ceil(rows * kIndexRow / (all.height - kOverviewHeading - (unplaced_.empty() ? 0 : kLeastList)));
    double width = std::min(blocks * kIndexWidth, all.width * kMostAside);
    if (!unplaced_.empty()) width = std::max(width, kListWidth);
    map_ = {all.x, all.y, all.width - width - kOverviewInset, all.height};
    side_ = {map_.Right() + kOverviewInset, all.y, width, all.height};
  } else {
    const double blocks = std::max(1.0, std::floor(all.width / kIndexWidth));
    const double wanted =
        16 + std::ceil(rows / blocks) * kIndexRow + (unplaced_.empty() ? 0 : kLeastList + 10);
    const double height = std::min(wanted, all.height * kMostAside);
    map_ = {all.x, all.y, all.width, all.height - height - kOverviewInset};
    side_ = {all.x, map_.Bottom() + kOverviewInset, all.width, height};
  }
}

std::string OverviewSheets::IndexCell(size_t row, size_t column) const {
  if (row == 0) return column == 0 ? SheetsText(1, Pages()) : column == 3 ? "Overview, index, legend" : "";
  const size_t strip = row - 1;
  if (strip >= plan_.strips.size())
    return column == 0   ? SheetsText(1 + Pages() + plan_.strips.size(), table_pages_)
           : column == 3 ? "Table of borings"
                         : "";
  const Interval stations = plan_.strips[strip].Stations();
  const bool km = plan_.report.road.km_stations;
  if (column == 0) return std::to_string(1 + Pages() + strip);
  if (column == 1) return RoundStationText(stations.low, km);
  if (column == 2) return RoundStationText(stations.high, km);
  const std::string views = plan_.HasPlan() && plan_.HasProfile() ? "Plan, profile"
                            : plan_.HasPlan()                     ? "Plan"
                                                                  : "Profile";
  const size_t borings = plan_.near[strip].size();
  return views + (borings == 0 ? "" : ", " + Counted(borings, "boring"));
}

std::string OverviewSheets::UnplacedCell(size_t row, size_t column) const {
  const PlotBoring& boring = *unplaced_[row].boring;
  if (column == 0) return boring.id;
  if (column == 3) return unplaced_[row].reason;
  const double value = column == 1 ? boring.northing : boring.easting;
  return IsDrawable(value) ? FormatFixed(value, 2) : "";
}

void OverviewSheets::Draw(Canvas& canvas, size_t page, const std::vector<std::string>& notes) const {
  const SheetRect other = TableArea(plan_.layout);
  if (page == 0) {
    DrawOverviewMap(canvas, map_, plan_);
    DrawLegend(canvas, plan_, notes);
    Heading(canvas, side_.x, side_.y + 2, "Sheets");
    index_->Draw(canvas, 0);
    if (!list_ || !list_on_first_) return;
    Heading(canvas, side_.x, side_.y + kOverviewHeading + index_->HeightOfFirst() + 6,
            "Borings without a place along the road");
    list_->Draw(canvas, 0);
  } else if (page <= index_pages_) {
    Heading(canvas, other.x, other.y - 4, "Sheets, continued");
    index_->Draw(canvas, page);
  } else {
    Heading(canvas, other.x, other.y - 4, "Borings without a place along the road");
    list_->Draw(canvas, page - index_pages_ - (list_on_first_ ? 0 : 1));
  }
}

}  // namespace velmora::drawing
