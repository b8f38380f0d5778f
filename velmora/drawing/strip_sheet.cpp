#include "velmora/drawing/strip_sheet.h"

#include <algorithm>

#include "velmora/drawing/blank_canvas.h"
#include "velmora/drawing/key_table.h"
#include "velmora/drawing/notes.h"
#include "velmora/drawing/style.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kStripInset = 4;  // mm
constexpr double kLeastPlan = 55;  // of the views beside a large key
constexpr double kLeastProfile = 70;
constexpr double kSmallBand = 1.0 / 6;  // of the views' height, for a key with offsets

struct Views {
  StripPlanSummary plan;
  StripProfileSummary profile;
};

class StripSheet {
 public:
  StripSheet(const ReportPlan& plan, size_t strip)
      : plan_(plan),
        room_(plan.room),
        content_(plan.Content(strip, room_)),
        plan_panel_(plan.plan_panel),
        profile_panel_(plan.profile_panel) {}
  StripSheet(const StripSheet&) = delete;
  StripSheet& operator=(const StripSheet&) = delete;

  StripSheetSummary Draw(Canvas& canvas) {
    const double notes_width = plan_.layout.beside.width - 2 * kStripInset;
    size_t most_numbers = BoringKey::kAny;
    BoringKey key;
    if (content_.borings.size() > kMostCircledBorings) {  // nearly all will have numbers
      for (const PlotBoring* boring : content_.borings) key.Number(*boring);
      if (!MakeBand(BandTable(key).Height())) most_numbers = ShrinkBand(key);
    }
    // How large the key is shows when the labels are placed, and their room depends on the key's size.
    for (int round = 0; round < 4 && key.Borings().size() <= kMostCircledBorings; ++round) {
      BlankCanvas blank;
      key = BoringKey();
      const Views views = DrawViews(blank, &key);
      if (key.Borings().empty()) break;
      const double beside = plan_.layout.beside.height - NotesOf(views, notes_width).Height() - kStripInset;
      if (band_ == 0 && KeyTable(key, plan_.layout.beside.width).Height() <= beside) break;
      if (band_ > 0 && BandTable(key).Height() <= band_) break;
      if (MakeBand(BandTable(key).Height())) continue;
      most_numbers = NumbersThatFit(key);
      break;
    }
    BoringKey drawn(most_numbers);
    const Views views = DrawViews(canvas, &drawn);
    const Notes notes = NotesOf(views, notes_width);
    const SheetRect& beside = plan_.layout.beside;
    notes.Draw(canvas, {beside.x + kStripInset, beside.y + 2});
    if (band_ > 0)
      BandTable(drawn).Draw(canvas, {plan_.layout.frame.x, plan_.layout.views.Bottom() - band_ + 1});
    else
      KeyTable(drawn, beside.width).Draw(canvas, {beside.x, beside.y + notes.Height() + 2});
    return {views.plan.without_label + views.profile.without_label,
            views.plan.outside.size() + views.profile.outside.size()};
  }

 private:
  Views DrawViews(Canvas& canvas, BoringKey* key) {
    Views views;
    if (plan_.HasPlan()) views.plan = DrawStripPlan(canvas, plan_panel_, content_, key);
    if (plan_.HasProfile())
      views.profile = DrawStripProfile(canvas, profile_panel_, content_, plan_.profile,
                                       {plan_.height_scale, plan_.report.setup.decimals}, key);
    return views;
  }

  KeyTable BandTable(const BoringKey& key) const {
    const double width = plan_.layout.frame.width;
    KeyTable wide(key, width);
    if (wide.Height() <= plan_.layout.views.height * kSmallBand) return wide;
    return KeyTable(key, width, KeySpacing::kDense);
  }

  // Takes the height for the key from plan and profile. Returns whether they could give all of it.
  bool MakeBand(double wanted) {
    const SheetRect& views = plan_.layout.views;
    const double road = content_.strip.ExtentAt(content_.strip.angle).height * 1000 / room_.scale;
    const double margins = plan_.plan_panel.height - plan_.room.plan.height;
    double least_plan =
        plan_.HasPlan() ? std::min(plan_.plan_panel.height, std::max(kLeastPlan, road + margins)) : 0;
    double least_profile = plan_.HasProfile() ? std::min(kLeastProfile, plan_.profile_panel.height) : 0;
    const double rest = views.height - least_plan - least_profile;
    const bool enough = wanted <= rest;
    band_ = std::min(wanted, std::max(rest, 0.0));
    const double left = views.height - band_;
    plan_panel_.height = plan_.HasProfile() ? std::clamp(plan_.HasPlan() ? left / 2 : 0.0, least_plan,
                                                         std::max(least_plan, left - least_profile))
                                            : left;
    profile_panel_.y = plan_panel_.Bottom();
    profile_panel_.height = left - plan_panel_.height;
    room_.plan.height = plan_panel_.height - margins;
    return enough;
  }

  // Crowded views have room for fewer numbers than the band; it keeps some of what is left over, as its
  // height gives the views more. Returns how many numbers there can be.
  size_t ShrinkBand(const BoringKey& all) {
    constexpr double kMoreNumbers = 1.6;
    BlankCanvas blank;
    BoringKey used(NumbersThatFit(all));
    DrawViews(blank, &used);
    MakeBand(std::min(band_, BandTable(used).Height() * kMoreNumbers));
    return NumbersThatFit(all);
  }

  // The largest part of the key whose table fits into the band.
  size_t NumbersThatFit(const BoringKey& key) const {
    size_t low = 0;
    size_t high = key.Borings().size();
    while (low < high) {
      const size_t middle = (low + high + 1) / 2;
      BoringKey part;
      for (size_t i = 0; i < middle; ++i) part.Number(*key.Borings()[i]);
      if (KeyTable(part, plan_.layout.frame.width, KeySpacing::kDense).Height() <= band_)
        low = middle;
      else
        high = middle - 1;
    }
    return low;
  }

  Notes NotesOf(const Views& views, double width) const {
    Notes notes(width);
    const int decimals = plan_.report.setup.decimals;
    const auto nothing = [](const PlotBoring&) { return std::string(); };
    const auto level = [&](const PlotBoring& b) { return FormatFixed(b.level.value_or(0), decimals); };
    constexpr size_t kLines = 3;
    notes.Add("Outside the plan", views.plan.outside, kLines, OffsetLabel);
    if (plan_.HasProfile())
      notes.Add("Without a level, not in the profile", views.profile.without_level, kLines, nothing);
    notes.Add("Outside the profile, with their levels", views.profile.outside, kLines, level);
    const size_t drawn = content_.borings.size() - views.plan.outside.size();
    if (views.plan.dots && plan_.HasPlan())
      notes.Add(std::to_string(drawn) + " borings in the plan, as dots", 1);
    std::string unlabelled;
    if (views.plan.without_label > 0) unlabelled = std::to_string(views.plan.without_label) + " in the plan";
    if (views.profile.without_label > 0)
      unlabelled +=
          (unlabelled.empty() ? "" : ", ") + std::to_string(views.profile.without_label) + " in the profile";
    if (!unlabelled.empty()) notes.Add("Not labelled: " + unlabelled, 1);
    return notes;
  }

  const ReportPlan& plan_;
  StripRoom room_;
  StripContent content_;
  SheetRect plan_panel_;
  SheetRect profile_panel_;
  double band_ = 0;  // mm above the title block, for the key
};

}  // namespace

StripSheetSummary DrawStripSheet(Canvas& canvas, const ReportPlan& plan, size_t strip) {
  return StripSheet(plan, strip).Draw(canvas);
}

}  // namespace velmora::drawing
