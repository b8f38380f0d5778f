// The borings of a list with their places along a road, all of them in memory, for drawings.
#ifndef VELMORA_CLI_ALIGN_PLACED_BORINGS_H_
#define VELMORA_CLI_ALIGN_PLACED_BORINGS_H_

#include <optional>
#include <string>
#include <vector>

#include "cli/align/alignment_input.h"
#include "velmora/drawing/alignment_sheet.h"
#include "velmora/lists/fields.h"
#include "velmora/lists/list_options.h"

namespace velmora::cli {

struct BoringList {
  std::string file;
  ListOptions list;
  double max_offset = 0;  // m, beyond which a boring is far from the road
  bool km = false;        // stations in notes
};

struct PlacedBorings {
  std::vector<drawing::PlotBoring> points;            // of the rows that are points
  std::vector<std::optional<double>> profile_levels;  // of each point
  std::vector<std::string> own_titles;                // of the columns that the list carries
  std::vector<std::vector<std::string>> own;          // of each point, a field a column
  DecimalSign decimal = DecimalSign::kPoint;          // of numbers in them
  struct UnreadableRow {
    std::string id;
    std::int64_t line;
    std::string problem;
  };
  std::vector<UnreadableRow> unreadable;
  std::vector<std::string> notes;  // lines for people on the points
  bool most_swapped = false;       // northing and easting are probably exchanged
};

// Reads and places the whole list; the notes that the list itself gives rise to are printed. Throws a
// Refusal.
PlacedBorings ReadPlacedBorings(const BoringList& list, AlignmentInput* input);

// Prints the notes, and where the unreadable rows are not in the `result` ("drawing"). Throws ExitWith where
// the list is to be corrected.
void ReportPlacedBorings(const BoringList& list, const PlacedBorings& borings, const std::string& result);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_PLACED_BORINGS_H_
