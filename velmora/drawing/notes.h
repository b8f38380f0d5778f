// Lines of text on a sheet about what it does not show.
#ifndef VELMORA_DRAWING_NOTES_H_
#define VELMORA_DRAWING_NOTES_H_

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "velmora/drawing/alignment_sheet.h"

namespace velmora::drawing {

inline constexpr double kNotePitch = 3.2;  // mm, between lines

class Notes {
 public:
  explicit Notes(double width) : width_(width) {}

  // Wrapped to the width, in at most so many lines.
  void Add(const std::string& text, size_t most_lines = 3);
  // "Outside the plan (3): 24V1 V 31.20, 24V2 H 40.00, 24V9", with as many names as fit into the lines, each
  // with its value where there is one, and the number of the others. Nothing for no borings.
  void Add(const std::string& heading, std::span<const PlotBoring* const> borings, size_t most_lines,
           const std::function<std::string(const PlotBoring&)>& value);

  double Height() const { return kNotePitch * static_cast<double>(lines_.size()); }
  void Draw(Canvas& canvas, SheetPoint upper_left) const;

 private:
  double width_;
  std::vector<std::string> lines_;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_NOTES_H_
