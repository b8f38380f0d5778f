// An alignment as the commands read it.
#ifndef VELMORA_CLI_ALIGN_ALIGNMENT_INPUT_H_
#define VELMORA_CLI_ALIGN_ALIGNMENT_INPUT_H_

#include <string>

#include "velmora/alignment/alignment_file.h"

namespace velmora::cli {

struct AlignmentInput : AlignmentFile {
  std::string file;  // as the user wrote it
};

// Reads a file, "-" being standard input. Throws a Refusal when it cannot be read or has not one point.
void ReadAlignment(const std::string& file, AlignmentInput* input);
// Throws a Refusal unless there is a plan (a profile) of two points.
void RequirePlan(const AlignmentInput& input);
void RequireProfile(const AlignmentInput& input);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_ALIGNMENT_INPUT_H_
