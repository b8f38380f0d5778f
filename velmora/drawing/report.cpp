#include "velmora/drawing/report.h"

#include <algorithm>

#include "velmora/alignment/station_text.h"
#include "velmora/drawing/boring_table.h"
#include "velmora/drawing/overview_sheet.h"
#include "velmora/drawing/report_plan.h"
#include "velmora/drawing/sheet_frame.h"
#include "velmora/drawing/strip_sheet.h"

namespace velmora::drawing {
namespace {

class ReportDrawing {
 public:
  explicit ReportDrawing(const Report& report)
      : plan_(report), table_(report.table, plan_.layout), overview_(plan_, table_.Pages()) {
    plan_.first_strip_sheet = 1 + overview_.Pages();
  }
  ReportDrawing(const ReportDrawing&) = delete;
  ReportDrawing& operator=(const ReportDrawing&) = delete;

  ReportSize Size() const {
    return {Sheets(), plan_.too_many ? kMostReportStrips + 1 : plan_.strips.size(), plan_.room.scale,
            plan_.height_scale};
  }

  ReportSummary Draw(Canvas& canvas) {
    const std::vector<std::string> notes = plan_.Notes();
    for (size_t page = 0; page < overview_.Pages(); ++page) {
      Begin(canvas, page == 0 ? "Overview" : "Overview, continued", page == 0 ? overview_.Scale() : 0, 0);
      overview_.Draw(canvas, page, notes);
    }
    for (size_t i = 0; i < plan_.strips.size(); ++i) {
      Begin(canvas, ContentOf(i), plan_.room.scale, plan_.height_scale);
      DrawStripSheet(canvas, plan_, i);
    }
    for (size_t page = 0; page < table_.Pages(); ++page) {
      Begin(canvas, "Table of borings", 0, 0);
      table_.Draw(canvas, page);
    }
    return {Sheets(), plan_.room.scale, plan_.height_scale, notes};
  }

 private:
  size_t Sheets() const { return overview_.Pages() + plan_.strips.size() + table_.Pages(); }

  void Begin(Canvas& canvas, const std::string& content, double scale, double height_scale) {
    BeginFramedSheet(canvas, plan_.layout, plan_.report, {content, ++number_, Sheets(), scale, height_scale});
  }

  std::string ContentOf(size_t strip) const {
    const Interval stations = plan_.strips[strip].Stations();
    const bool km = plan_.report.road.km_stations;
    const char* views = !plan_.HasProfile() ? "Plan, "
                        : !plan_.HasPlan()  ? "Profile, "
                                            : "Plan and profile, ";
    return views + RoundStationText(stations.low, km) + " to " + RoundStationText(stations.high, km);
  }

  ReportPlan plan_;
  BoringTable table_;
  OverviewSheets overview_;
  size_t number_ = 0;
};

}  // namespace

ReportSize SizeOfReport(const Report& report) { return ReportDrawing(report).Size(); }

ReportSummary DrawReport(const Report& report, Canvas& canvas) { return ReportDrawing(report).Draw(canvas); }

}  // namespace velmora::drawing
