// What is decided about a report before anything is drawn: its strips, their scales and their borings.
#ifndef VELMORA_DRAWING_REPORT_PLAN_H_
#define VELMORA_DRAWING_REPORT_PLAN_H_

#include <optional>
#include <vector>

#include "velmora/drawing/report.h"
#include "velmora/drawing/sheet_layout.h"
#include "velmora/drawing/strip_plan.h"
#include "velmora/drawing/strip_profile.h"

namespace velmora::drawing {

struct ReportPlan {
  explicit ReportPlan(const Report& report);

  bool HasPlan() const { return course.Length() > 0; }
  bool HasProfile() const { return !profile.IsEmpty(); }
  // `in` outlives the content.
  StripContent Content(size_t strip, const StripRoom& in) const;

  const Report& report;
  SheetLayout layout;
  Course course;
  ProfileLine profile;
  Interval stations;  // that are drawn
  SheetRect plan_panel{};
  SheetRect profile_panel{};
  StripRoom room;
  double height_scale = 0;
  std::vector<Strip> strips;                         // none when they would be more than kMostReportStrips
  bool too_many = false;                             // as they would
  std::vector<std::vector<const PlotBoring*>> near;  // of each strip, by station: those to be drawn there
  std::vector<const PlotBoring*> nowhere;            // those along the road that no strip reaches

  std::vector<PlanFrame> frames;  // of each strip's plan
  size_t first_strip_sheet = 2;

  // Lines for people on what the sheets leave out.
  std::vector<std::string> Notes() const;

 private:
  void CutProfile();
  void PlaceOnStrips();
  bool ShowsNearBorings() const;
  void PlaceBorings();
  void PlaceStrays();
  double HeightScaleOfAll() const;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_REPORT_PLAN_H_
