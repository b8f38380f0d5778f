// A combined alignment file as a whole, read without messages: its points with their lines, and what reading
// skips and a rewrite would lose.
#ifndef VELMORA_ALIGNMENT_ALIGNMENT_FILE_H_
#define VELMORA_ALIGNMENT_ALIGNMENT_FILE_H_

#include <optional>
#include <string>
#include <vector>

#include "velmora/alignment/checks.h"
#include "velmora/alignment/rewrite_losses.h"
#include "velmora/alignment/vag2.h"

namespace velmora {

struct AlignmentFile {
  CVag2 set;
  std::vector<kovltype> plan;  // the same points without a cursor
  std::vector<kovltype> profile;
  std::vector<int> plan_lines;  // of each point in the file
  std::vector<int> profile_lines;
  BoundedFindings skipped;      // lines, and parts of lines, that are not read
  SkippedLines skipped_lines;   // whole lines of `skipped`, without empty ones
  BoundedFindings losses;       // what is lost when the alignment is written
  std::optional<Finding> tail;  // text after an end-of-file character, which only a rewrite of the file keeps

  std::string Name() const { return ToUtf8(set.vlNamn); }
};

// Fills an empty *file from an open text. No value when it has a point; else the reason, with the line (0:
// the file as a whole).
std::optional<Finding> ReadAlignmentFile(TextReader& reader, AlignmentFile* file);
// Why a file that was read has no plan of two points; nothing where it has.
std::optional<Finding> ProblemOfPlan(const AlignmentFile& file);

// What is not read, and what CheckPlan and CheckProfile find, in the order of the file.
BoundedFindings CheckAlignment(const AlignmentFile& file);

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_ALIGNMENT_FILE_H_
