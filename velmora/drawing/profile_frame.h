// How station and level lie on the sheet.
#ifndef VELMORA_DRAWING_PROFILE_FRAME_H_
#define VELMORA_DRAWING_PROFILE_FRAME_H_

#include "velmora/drawing/profile_line.h"
#include "velmora/drawing/style.h"

namespace velmora::drawing {

struct Range {
  double low;
  double high;

  bool Holds(double value) const { return value >= low && value <= high; }
  double Size() const { return high - low; }
};

class ProfileFrame {
 public:
  // The largest usual scale of lengths at which `stations` fit, or `plan_scale` where it does nearly as
  // well, and the greatest exaggeration at which `levels` fit between `below` and `above` millimetres of
  // room.
  ProfileFrame(Range stations, Range levels, const Panel& plot, double below, double above,
               double plan_scale);

  double LengthScale() const { return length_scale_; }
  double HeightScale() const { return length_scale_ / exaggeration_; }
  double Exaggeration() const { return exaggeration_; }
  double MetresAlong(double millimetres) const { return millimetres * length_scale_ / 1000; }
  double MetresUp(double millimetres) const { return millimetres * HeightScale() / 1000; }
  // Of the whole plot.
  Range Stations() const;
  Range Levels() const;

  SheetPoint ToSheet(ProfilePlace place) const;

 private:
  Panel plot_;
  double length_scale_;
  double exaggeration_;
  double middle_station_;
  double base_level_;  // at the plot's lower edge
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PROFILE_FRAME_H_
