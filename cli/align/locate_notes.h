// What `align locate` says at the end about all points of a list.
#ifndef VELMORA_CLI_ALIGN_LOCATE_NOTES_H_
#define VELMORA_CLI_ALIGN_LOCATE_NOTES_H_

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "cli/align/commands.h"
#include "cli/align/placing.h"
#include "cli/align/swapped_points.h"
#include "velmora/common/finding.h"
#include "velmora/lists/point_list.h"
#include "velmora/lists/repeated_ids.h"

namespace velmora::cli {

// The number of rows of each status.
class Tally {
 public:
  void Add(PlaceStatus status) { ++placed_[static_cast<size_t>(status)]; }
  void AddUnreadable() { ++unreadable_; }
  void Add(const Tally& other);
  std::int64_t Unreadable() const { return unreadable_; }
  // Of rows for this many points, of which a point has one or more.
  std::string Text(std::uint64_t points) const;

 private:
  std::array<std::int64_t, kPlaceStatuses> placed_{};
  std::int64_t unreadable_ = 0;
};

// Of the points of one block, in any thread.
struct BlockNotes {
  explicit BlockNotes(const BoundingBox& bounds) : swapped(bounds) {}

  SwappedPoints swapped;
  Tally tally;
  Corrections corrections;
};

class LocateNotes {
 public:
  LocateNotes(const LocateOptions& options, const BoundingBox& bounds) : options_(options), all_(bounds) {}

  // Blocks come in the order of the list.
  void Add(const std::vector<ListedPoint>& points, const BlockNotes& block);
  std::uint64_t Points() const { return points_; }
  // The line below the table.
  std::string TallyText() const { return all_.tally.Text(points_); }
  // Prints the warnings, those of the list as a whole first. Throws ExitWith{1} when rows are unreadable, or
  // most points seem to have their coordinates swapped.
  void Report(const Findings& of_list);

 private:
  const LocateOptions& options_;
  BlockNotes all_;
  RepeatedIds ids_;
  ListedPoint first_problem_;
  std::uint64_t points_ = 0;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_LOCATE_NOTES_H_
