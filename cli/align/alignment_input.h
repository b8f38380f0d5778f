// An alignment as the commands read it.
#ifndef VELMORA_CLI_ALIGN_ALIGNMENT_INPUT_H_
#define VELMORA_CLI_ALIGN_ALIGNMENT_INPUT_H_

#include <string>

#include "velmora/alignment/alignment_file.h"

namespace velmora::cli {

struct AlignmentInput : AlignmentFile {
  std::string file;  // as the user wrote it

  // The file's own name; empty for standard input.
  std::string FileName() const;
};

// For a verb that reads an alignment and the list of an option: throws WrongUsage when both are standard
// input.
void RequireOneStandardInput(const std::string& file, const std::string& list, const std::string& option);

// Reads a file, "-" being standard input. Throws a Refusal when it cannot be read or has not one point.
void ReadAlignment(const std::string& file, AlignmentInput* input);
// Throws a Refusal unless there is a plan (a profile) of two points.
void RequirePlan(const AlignmentInput& input);
void RequireProfile(const AlignmentInput& input);
// For what is made of the alignment without a list of its findings.
void WarnOfSkippedLines(const AlignmentInput& input);
// All of it for an alignment with a plan.
void ReadPlan(const std::string& file, AlignmentInput* input);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_ALIGNMENT_INPUT_H_
