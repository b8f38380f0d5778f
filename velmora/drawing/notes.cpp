#include "velmora/drawing/notes.h"

#include "velmora/drawing/labels.h"
#include "velmora/drawing/style.h"

namespace velmora::drawing {

void Notes::Add(const std::string& text, size_t most_lines) {
  for (std::string& line : WrapText(text, kSmallSize, width_, most_lines)) lines_.push_back(std::move(line));
}

void Notes::Add(const std::string& heading, std::span<const PlotBoring* const> borings, size_t most_lines,
                const std::function<std::string(const PlotBoring&)>& value) {
  if (borings.empty()) return;
  constexpr double kLongestName = 30;  // mm
  constexpr double kLongest = kLongestName + 15;
  const double room = static_cast<double>(most_lines) * width_;
  std::string line = heading + " (" + std::to_string(borings.size()) + "): ";
  std::string rest = " and " + std::to_string(borings.size()) + " more, in the table";
  // A name is never divided between lines, so a part of each line stays empty.
  const double spare = static_cast<double>(most_lines - 1) * kLongest;
  double used = TextWidth(line + rest, kSmallSize) + spare;
  size_t named = 0;
  for (const PlotBoring* boring : borings) {
    std::string name = FitText(boring->id, kSmallSize, kLongestName);
    if (const std::string of_boring = value(*boring); !of_boring.empty()) name += " " + of_boring;
    used += TextWidth(name + ", ", kSmallSize);
    if (used > room) break;
    if (named > 0) line += ", ";
    line += name;
    ++named;
  }
  if (named == 0) {
    line = heading + ": " + std::to_string(borings.size()) + ", in the table";
  } else if (named < borings.size()) {
    line += " and " + std::to_string(borings.size() - named) + " more, in the table";
  }
  Add(line, most_lines);
}

void Notes::Draw(Canvas& canvas, SheetPoint upper_left) const {
  double y = upper_left.y + kNotePitch / 2;
  for (const std::string& line : lines_) {
    canvas.Text({upper_left.x, y}, line, {.size = kSmallSize, .anchor = TextAnchor::kStart}, kText);
    y += kNotePitch;
  }
}

}  // namespace velmora::drawing
