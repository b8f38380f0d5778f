#include "cli/align/swapped_points.h"

#include "cli/terminal/error.h"
#include "velmora/text/counted.h"

namespace velmora::cli {
namespace {

std::string HowToSwap(const ListOptions& options) {
  if (options.columns.contains("n") || options.columns.contains("e")) return "exchange n and e in --columns";
  return options.east_first ? "leave out --axes en" : "give --axes en";
}

}  // namespace

void SwappedPoints::Add(std::int64_t line, double northing, double easting) {
  check_.Add(northing, easting);
  ++points_;
  if (first_line_ == 0 && check_.NearSwapped() > 0) first_line_ = line;
}

void SwappedPoints::Add(const SwappedPoints& other) {
  check_.Add(other.check_);
  points_ += other.points_;
  if (first_line_ == 0) first_line_ = other.first_line_;
}

void SwappedPoints::Report(const std::string& list, const ListOptions& options) const {
  const std::int64_t swapped = check_.NearSwapped();
  if (swapped == 0) return;
  const std::string text =
      "northing and easting look swapped: " + Counted(swapped, "point lies", "points lie") +
      " near the road only when swapped, " + std::to_string(check_.Near()) + " as given; ";
  if (AreMost())
    PrintError(At(list, text + HowToSwap(options)));
  else if (check_.LooksSwapped())
    Warn(At(list, text + HowToSwap(options)));
  else
    Warn(At(list, first_line_,
            text + (swapped == 1 ? "correct this row" : "correct these rows, of which this is the first")));
}

}  // namespace velmora::cli
