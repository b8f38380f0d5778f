#include "cli/align/alignment_input.h"

#include "cli/terminal/error.h"

namespace velmora::cli {

void ReadAlignment(const std::string& file, AlignmentInput* input) {
  input->file = file;
  TextReader reader;
  const bool open = file == "-" ? reader.OpenStandardInput() : reader.Open(PathFromSystem(file));
  if (!open) RefuseUnopened(file);
  if (const auto problem = ReadAlignmentFile(reader, input))
    throw Refusal(At(file, problem->line, problem->text));
}

void RequirePlan(const AlignmentInput& input) {
  if (const auto problem = ProblemOfPlan(input)) throw Refusal(At(input.file, problem->line, problem->text));
}

void RequireProfile(const AlignmentInput& input) {
  if (input.profile.empty())
    throw Refusal(At(input.file, "has no profile; levels need one (type 10, or a section \"Profil\")"));
  if (input.profile.size() < 2)
    throw Refusal(
        At(input.file, input.profile_lines[0], "is the profile's only point; a profile needs two or more"));
}

}  // namespace velmora::cli
