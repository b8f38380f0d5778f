// An alignment as the commands read it: the library's model, and what each line of the file was.
#ifndef VELMORA_CLI_ALIGN_ALIGNMENT_INPUT_H_
#define VELMORA_CLI_ALIGN_ALIGNMENT_INPUT_H_

#include <cstdint>
#include <string>
#include <vector>

#include "velmora/alignment/vag2.h"

namespace velmora::cli {

struct AlignmentInput {
  struct BadLine {
    int number;
    std::string text;
  };

  std::string file;  // as the user wrote it
  CVag2 set;
  std::vector<kovltype> plan;  // the same points without a cursor
  std::vector<kovltype> profile;
  std::vector<int> plan_lines;  // where each point stands in the file
  std::vector<int> profile_lines;
  std::vector<BadLine> bad_lines;  // the first kMostBadLines of them
  std::int64_t bad_count = 0;

  static constexpr size_t kMostBadLines = 1000;

  std::string Name() const;
  bool Descending() const { return plan.size() >= 2 && plan[0].sek > plan[1].sek; }
};

// Reads a file, "-" being standard input. Throws a Refusal when it cannot be read or has not one point.
void ReadAlignment(const std::string& file, AlignmentInput* input);
// Throws a Refusal unless there is a plan (a profile) of two points.
void RequirePlan(const AlignmentInput& input);
void RequireProfile(const AlignmentInput& input);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_ALIGNMENT_INPUT_H_
