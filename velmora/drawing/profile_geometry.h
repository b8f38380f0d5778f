// Level over station: the line of a profile, and how it lies on the sheet.
#ifndef VELMORA_DRAWING_PROFILE_GEOMETRY_H_
#define VELMORA_DRAWING_PROFILE_GEOMETRY_H_

#include <optional>
#include <span>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/drawing/canvas.h"
#include "velmora/drawing/scale.h"

namespace velmora::drawing {

struct ProfilePoint {
  double station;
  double level;
};

class ProfileLine {
 public:
  // Leaves out points that cannot be drawn.
  explicit ProfileLine(std::span<const kovltype> points);

  const std::vector<kovltype>& Points() const { return points_; }
  size_t LeftOut() const { return left_out_; }
  bool IsEmpty() const { return points_.size() < 2; }

  // The corners of the line, and of vertical curves a point at least every `step` metres.
  std::vector<ProfilePoint> Samples(double step) const;
  // The points between these stations, with one more on either side.
  ProfileLine Part(const Interval& stations) const;
  // From the first point up to, but without, the last.
  std::optional<double> LevelAt(double station) const;

 private:
  std::vector<kovltype> points_;
  size_t left_out_ = 0;
};

class ProfileFrame {
 public:
  // The largest usual scale of lengths at which `stations` fit, or `plan_scale` if it uses the width nearly
  // as well, and the greatest exaggeration at which `levels` fit with `below` and `above` millimetres of
  // margin.
  ProfileFrame(Interval stations, Interval levels, const SheetRect& plot, double below, double above,
               double plan_scale);

  // At these scales; `base_level` is at the plot's lower edge.
  ProfileFrame(const SheetRect& plot, double length_scale, double height_scale, double middle_station,
               double base_level);

  double LengthScale() const { return length_scale_; }
  double HeightScale() const { return length_scale_ / exaggeration_; }
  double Exaggeration() const { return exaggeration_; }
  double MetresAlong(double millimetres) const { return millimetres * length_scale_ / 1000; }
  double MetresUp(double millimetres) const { return millimetres * HeightScale() / 1000; }
  // Of the whole plot.
  Interval Stations() const;
  Interval Levels() const;

  SheetPoint ToSheet(ProfilePoint place) const;

 private:
  SheetRect plot_;
  double length_scale_;
  double exaggeration_;
  double middle_station_;
  double base_level_;  // at the plot's lower edge
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PROFILE_GEOMETRY_H_
