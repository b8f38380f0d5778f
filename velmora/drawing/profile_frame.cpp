#include "velmora/drawing/profile_frame.h"

#include <algorithm>
#include <cmath>

#include "velmora/drawing/scale.h"

namespace velmora::drawing {
namespace {

constexpr double kFairUse = 0.62;  // of the width, for the plan's scale to be taken
constexpr double kAside = 2;       // mm left free at either end
constexpr double kMostExaggerated = 100;
constexpr double kLeastRange = 0.5;  // m; a level road is not blown up further

}  // namespace

ProfileFrame::ProfileFrame(Range stations, Range levels, const Panel& plot, double below, double above,
                           double plan_scale)
    : plot_(plot), middle_station_((stations.low + stations.high) / 2) {
  const double least = 1000 * stations.Size() / (plot.width - 2 * kAside);
  length_scale_ = NiceScale(least);
  if (plan_scale >= least && plan_scale * kFairUse <= least) length_scale_ = plan_scale;

  const double room = plot.height - below - above;
  const double range = std::max(levels.Size(), kLeastRange);
  exaggeration_ = std::min(NiceStepBelow(length_scale_ * room / (1000 * range)), kMostExaggerated);
  // What is left over of the height goes to both sides.
  const double spare = MetresUp(room) - levels.Size();
  base_level_ = levels.low - MetresUp(below) - spare / 2;
}

Range ProfileFrame::Stations() const {
  const double half = MetresAlong(plot_.width / 2);
  return {middle_station_ - half, middle_station_ + half};
}

Range ProfileFrame::Levels() const { return {base_level_, base_level_ + MetresUp(plot_.height)}; }

SheetPoint ProfileFrame::ToSheet(ProfilePlace place) const {
  return {plot_.x + plot_.width / 2 + (place.station - middle_station_) * 1000 / length_scale_,
          plot_.Bottom() - (place.level - base_level_) * 1000 / HeightScale()};
}

}  // namespace velmora::drawing
