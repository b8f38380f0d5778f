#include "velmora/drawing/report.h"

#include <algorithm>

#include "velmora/alignment/station_text.h"
#include "velmora/drawing/report_plan.h"
#include "velmora/drawing/sheet_frame.h"
#include "velmora/drawing/strip_sheet.h"

namespace velmora::drawing {
namespace {

class ReportDrawing {
 public:
  ReportDrawing(const ReportPlan& plan, Canvas& canvas) : plan_(plan), canvas_(canvas) {}

  ReportSummary Draw() {
    sheets_ = 1 + plan_.strips.size();
    Begin("Overview");
    for (size_t i = 0; i < plan_.strips.size(); ++i) DrawStrip(i);
    return {sheets_, plan_.room.scale, plan_.height_scale, {}};
  }

 private:
  void Begin(const std::string& content) {
    BeginFramedSheet(canvas_, plan_.layout, plan_.report,
                     {content, ++number_, sheets_, plan_.room.scale, plan_.height_scale});
  }

  void DrawStrip(size_t i) {
    const Interval stations = plan_.strips[i].Stations();
    const bool km = plan_.report.road.km_stations;
    Begin((plan_.HasProfile() ? "Plan and profile, " : "Plan, ") + RoundStationText(stations.low, km) +
          " to " + RoundStationText(stations.high, km));
    DrawStripSheet(canvas_, plan_, i);
  }

  const ReportPlan& plan_;
  Canvas& canvas_;
  size_t number_ = 0;
  size_t sheets_ = 0;
};

}  // namespace

ReportSummary DrawReport(const Report& report, Canvas& canvas) {
  const ReportPlan plan(report);
  return ReportDrawing(plan, canvas).Draw();
}

}  // namespace velmora::drawing
