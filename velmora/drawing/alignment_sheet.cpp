#include "velmora/drawing/alignment_sheet.h"

#include <algorithm>
#include <cmath>

#include "velmora/alignment/station_text.h"
#include "velmora/drawing/blank_canvas.h"
#include "velmora/drawing/key_table.h"
#include "velmora/drawing/plan_view.h"
#include "velmora/drawing/profile_view.h"
#include "velmora/drawing/scale.h"
#include "velmora/drawing/style.h"
#include "velmora/drawing/title_block.h"
#include "velmora/text/counted.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kSheetWidth = 420;  // mm, A3
constexpr double kSheetHeight = 297;
constexpr double kFrameMargin = 8;
constexpr double kLeastPlanHeight = 126;
constexpr double kLeastProfileHeight = 100;

bool IsPlaced(const PlotBoring& boring) { return boring.placed; }

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

std::vector<std::string> Borings(const PlotInput& input) {
  const std::vector<PlotBoring>& borings = input.borings;
  if (borings.empty()) return {"No borings"};
  const auto placed = static_cast<size_t>(std::count_if(borings.begin(), borings.end(), IsPlaced));
  const auto too_far = static_cast<size_t>(
      std::count_if(borings.begin(), borings.end(), [](const PlotBoring& b) { return b.too_far; }));
  std::vector<std::string> lines = {Counted(borings.size(), "boring")};
  if (placed < borings.size()) lines.front() += ", " + std::to_string(placed) + " of them along the line";
  if (too_far > 0)
    lines.push_back(std::to_string(too_far) + " farther than " + PlainNumber(input.max_offset) +
                    " m from it");
  return lines;
}

// Plan and profile within `frame`, above the title block, which learns what they show. `key` holds the
// numbers of the borings afterwards.
void DrawViews(Canvas& canvas, const PlotInput& input, const PlanPath& path, const ProfileLine& profile,
               const SheetRect& frame, TitleBlock* title, BoringKey* key) {
  const bool has_profile = !profile.IsEmpty();
  const bool has_plan = !path.Points().empty() || !has_profile;
  const double least_plan = has_profile ? std::min(kLeastPlanHeight, frame.height / 2) : frame.height;
  const double most_plan =
      has_profile ? std::max(frame.height - kLeastProfileHeight, least_plan) : frame.height;
  const double plan_height = has_plan ? PlanHeight(input, path, frame.width, least_plan, most_plan) : 0;
  const SheetRect plan_panel = {frame.x, frame.y, frame.width, plan_height};
  const SheetRect profile_panel = {frame.x, plan_panel.Bottom(), frame.width, frame.height - plan_height};
  if (has_plan) {
    const PlanSummary plan = DrawPlan(canvas, plan_panel, input, path, key);
    title->plan_scale = plan.scale;
    title->unlabelled_in_plan = plan.without_label;
    title->dots = plan.dots;
    title->has_strays = plan.strays;
    if (plan.off_sheet > 0)
      title->notes.push_back(Counted(plan.off_sheet, "boring lies", "borings lie") + " outside the plan");
  }
  if (has_profile) {
    const ProfileSummary summary =
        DrawProfile(canvas, profile_panel, input, path, profile, title->plan_scale, key);
    title->unlabelled_in_profile = summary.without_label;
    if (summary.off_sheet > 0)
      title->notes.push_back(Counted(summary.off_sheet, "boring lies", "borings lie") +
                             " outside the profile");
  } else {
    title->notes.push_back("No profile");
  }
  if (has_plan && has_profile)
    canvas.Line({frame.x, profile_panel.y}, {frame.Right(), profile_panel.y}, kFrame);
  if (const size_t left_out = path.LeftOut() + profile.LeftOut(); left_out > 0)
    title->notes.push_back(Counted(left_out, "point") + " without usable numbers left out");
}

}  // namespace

void DrawAlignment(const PlotInput& input, Canvas& canvas) {
  const PlanPath path(input.plan);
  const ProfileLine profile(input.profile);
  TitleBlock title;
  title.name = input.name.empty() ? "Road without a name" : input.name;
  title.facts = Facts(input, path, profile);
  title.notes = Borings(input);
  title.has_borings = !input.borings.empty();

  const SheetRect frame = SheetRect{0, 0, kSheetWidth, kSheetHeight}.Inset(kFrameMargin);
  const double title_height = TitleBlockHeight(title, frame.width);
  const SheetRect title_panel = {frame.x, frame.Bottom() - title_height, frame.width, title_height};
  const SheetRect views = {frame.x, frame.y, frame.width, frame.height - title_height};

  // The size of the sheet comes before all else, so that the key's is found on a blank one.
  BoringKey key;
  if (title.has_borings) {
    BlankCanvas blank;
    TitleBlock ignored = title;
    DrawViews(blank, input, path, profile, views, &ignored, &key);
  }
  const KeyTable table(key, frame.width);
  title.has_key = table.Height() > 0;
  const double sheet_height = kSheetHeight + table.Height();
  title.sheet =
      title.has_key ? PlainNumber(kSheetWidth) + " × " + PlainNumber(std::ceil(sheet_height)) + " mm" : "A3";

  canvas.BeginSheet(title.name, kSheetWidth, sheet_height);
  BoringKey numbered_again;
  DrawViews(canvas, input, path, profile, views, &title, &numbered_again);
  DrawTitleBlock(canvas, title_panel, title);
  table.Draw(canvas, {frame.x, frame.Bottom()});
  canvas.Rectangle({frame.x, frame.y, frame.width, frame.height + table.Height()}, kFrame);
  canvas.Line({frame.x, title_panel.y}, {frame.Right(), title_panel.y}, kFrame);
  if (title.has_key) canvas.Line({frame.x, frame.Bottom()}, {frame.Right(), frame.Bottom()}, kFrame);
}

}  // namespace velmora::drawing
