#include "cli/align/locate_notes.h"

#include "cli/input/list_input.h"
#include "cli/terminal/error.h"
#include "velmora/text/counted.h"

namespace velmora::cli {

void Tally::Add(const Tally& other) {
  for (size_t i = 0; i < placed_.size(); ++i) placed_[i] += other.placed_[i];
  unreadable_ += other.unreadable_;
}

std::string Tally::Text(std::uint64_t points) const {
  std::string parts;
  std::int64_t rows = unreadable_;
  for (const std::int64_t placed : placed_) rows += placed;
  for (size_t i = 0; i < placed_.size(); ++i)
    if (placed_[i] > 0)
      parts += ", " + std::to_string(placed_[i]) + " " + StatusText(static_cast<PlaceStatus>(i));
  if (unreadable_ > 0) parts += ", " + std::to_string(unreadable_) + " unreadable";
  return Counted(points, "point") +
         (static_cast<std::uint64_t>(rows) == points ? "" : ", " + std::to_string(rows) + " rows") +
         (parts.empty() ? "" : ": " + parts.substr(2));
}

void LocateNotes::Add(const std::vector<ListedPoint>& points, const BlockNotes& block) {
  points_ += points.size();
  all_.swapped.Add(block.swapped);
  all_.corrections.Add(block.corrections);
  if (!ids_.IsFull())
    for (const ListedPoint& point : points) ids_.Add(point.id, point.line);
  if (all_.tally.Unreadable() == 0 && block.tally.Unreadable() > 0)
    for (const ListedPoint& point : points)
      if (!point.problem.empty()) {
        first_problem_ = point;
        break;
      }
  all_.tally.Add(block.tally);
}

void LocateNotes::Report(const Findings& of_list) {
  WarnOf(options_.points, of_list);
  WarnOf(options_.points, ids_.Note());
  if (const auto note = all_.corrections.Note(options_.points, options_.output.km)) Warn(*note);
  all_.swapped.Report(options_.points, options_.list);
  const std::int64_t unreadable = all_.tally.Unreadable();
  if (unreadable == 0) {
    if (all_.swapped.AreMost()) throw ExitWith{1};
    return;
  }
  PrintError(At(options_.points, first_problem_.line,
                first_problem_.problem + "; " + Counted(unreadable, "row was", "rows were") +
                    " not placed; correct the list and run again"));
  throw ExitWith{1};
}

}  // namespace velmora::cli
