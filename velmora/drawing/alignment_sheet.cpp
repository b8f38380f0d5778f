#include "velmora/drawing/alignment_sheet.h"

#include <algorithm>

#include "velmora/alignment/station_text.h"
#include "velmora/drawing/plan_view.h"
#include "velmora/drawing/profile_view.h"
#include "velmora/drawing/style.h"
#include "velmora/drawing/title_block.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kSheetWidth = 420;  // mm, A3
constexpr double kSheetHeight = 297;
constexpr double kFrameMargin = 8;
constexpr double kTitleHeight = 24;
constexpr double kLeastPlanHeight = 126;
constexpr double kLeastProfileHeight = 100;

std::string Counted(size_t count, const char* one, const char* many) {
  return std::to_string(count) + (count == 1 ? one : many);
}

void AddCount(size_t count, const char* one, const char* many, std::vector<std::string>* lines) {
  if (count > 0) lines->push_back(Counted(count, one, many));
}

std::vector<std::string> Facts(const PlotInput& input, const PlanPath& path, const ProfileLine& profile) {
  std::vector<std::string> facts;
  const auto& points = path.Points();
  if (!points.empty()) {
    const double first = points.front().sek;
    const double last = points.back().sek;
    if (points.size() == 1) {
      facts.push_back("Station " + StationText(first, input.km_stations) + ", one point alone");
    } else {
      facts.push_back("Stations " + StationText(first, input.km_stations) + " to " +
                      StationText(last, input.km_stations) + (last < first ? ", descending" : ""));
    }
    facts.push_back("Length " + FormatFixed(path.Length(), 3) + " m");
  } else if (!profile.IsEmpty()) {
    facts.push_back("Stations " + StationText(profile.Points().front().y, input.km_stations) + " to " +
                    StationText(profile.Points().back().y, input.km_stations));
  }
  if (!input.file.empty()) facts.push_back("File " + input.file);
  return facts;
}

std::vector<std::string> Borings(const std::vector<PlotBoring>& borings) {
  if (borings.empty()) return {"No borings"};
  const auto placed = static_cast<size_t>(
      std::count_if(borings.begin(), borings.end(), [](const PlotBoring& b) { return b.placed; }));
  std::vector<std::string> lines = {Counted(borings.size(), " boring", " borings")};
  if (placed < borings.size()) lines.front() += ", " + std::to_string(placed) + " of them along the line";
  return lines;
}

}  // namespace

void DrawAlignment(const PlotInput& input, Canvas& canvas) {
  const PlanPath path(input.plan);
  const ProfileLine profile(input.profile);
  const bool has_profile = !profile.IsEmpty();
  const bool has_plan = !path.Points().empty() || !has_profile;

  const SheetRect frame = SheetRect{0, 0, kSheetWidth, kSheetHeight}.Inset(kFrameMargin);
  const SheetRect title_panel = {frame.x, frame.Bottom() - kTitleHeight, frame.width, kTitleHeight};
  const double views = frame.height - kTitleHeight;
  const double least_plan = has_profile ? kLeastPlanHeight : views;
  const double most_plan = has_profile ? views - kLeastProfileHeight : views;
  const double plan_height = has_plan ? PlanHeight(input, path, frame.width, least_plan, most_plan) : 0;
  const SheetRect plan_panel = {frame.x, frame.y, frame.width, plan_height};
  const SheetRect profile_panel = {frame.x, plan_panel.Bottom(), frame.width, views - plan_height};

  TitleBlock title;
  title.name = input.name.empty() ? "Road without a name" : input.name;
  title.facts = Facts(input, path, profile);
  title.notes = Borings(input.borings);
  title.has_borings = !input.borings.empty();

  canvas.BeginSheet(title.name, kSheetWidth, kSheetHeight);
  size_t without_label = 0;
  if (has_plan) {
    const PlanSummary plan = DrawPlan(canvas, plan_panel, input, path);
    title.plan_scale = plan.scale;
    without_label = plan.without_label;
    title.dots = plan.dots;
    if (plan.dots) title.notes.push_back("Too many borings for labels");
    AddCount(plan.off_sheet, " boring lies outside the plan", " borings lie outside the plan", &title.notes);
  }
  if (has_profile) {
    const ProfileSummary summary = DrawProfile(canvas, profile_panel, input, path, profile, title.plan_scale);
    without_label = std::max(without_label, summary.without_label);
    AddCount(summary.off_sheet, " boring lies outside the profile", " borings lie outside the profile",
             &title.notes);
  } else {
    title.notes.push_back("No profile");
  }
  AddCount(without_label, " label found no room", " labels found no room", &title.notes);
  AddCount(path.LeftOut() + profile.LeftOut(), " point without usable numbers left out",
           " points without usable numbers left out", &title.notes);

  DrawTitleBlock(canvas, title_panel, title);
  canvas.Rectangle(frame, kFrame);
  canvas.Line({frame.x, title_panel.y}, {frame.Right(), title_panel.y}, kFrame);
  if (has_plan && has_profile)
    canvas.Line({frame.x, profile_panel.y}, {frame.Right(), profile_panel.y}, kFrame);
}

}  // namespace velmora::drawing
