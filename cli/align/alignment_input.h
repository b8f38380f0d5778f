// An alignment as the commands read it: the library's model, and the line of each point.
#ifndef VELMORA_CLI_ALIGN_ALIGNMENT_INPUT_H_
#define VELMORA_CLI_ALIGN_ALIGNMENT_INPUT_H_

#include <string>
#include <vector>

#include "velmora/alignment/checks.h"
#include "velmora/alignment/vag2.h"

namespace velmora::cli {

struct AlignmentInput {
  std::string file;  // as the user wrote it
  CVag2 set;
  std::vector<kovltype> plan;  // the same points without a cursor
  std::vector<kovltype> profile;
  std::vector<int> plan_lines;  // of each point in the file
  std::vector<int> profile_lines;
  BoundedFindings skipped;  // lines, and parts of lines, that are not read
  BoundedFindings losses;   // what is lost when the alignment is written
  bool has_tail = false;    // text after an end-of-file character, which only a rewrite of the file keeps

  std::string Name() const;
};

// Reads a file, "-" being standard input. Throws a Refusal when it cannot be read or has not one point.
void ReadAlignment(const std::string& file, AlignmentInput* input);
// Throws a Refusal unless there is a plan (a profile) of two points.
void RequirePlan(const AlignmentInput& input);
void RequireProfile(const AlignmentInput& input);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_ALIGNMENT_INPUT_H_
