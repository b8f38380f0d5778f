#include "cli/align/alignment_input.h"

#include "cli/input/list_input.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"

namespace velmora::cli {

std::string AlignmentInput::FileName() const {
  return file == "-" ? "" : PathForDisplay(NameOfPath(PathFromSystem(file)));
}

void RequireOneStandardInput(const std::string& file, const std::string& list, const std::string& option) {
  if (file == "-" && list == "-")
    throw WrongUsage("only one of FILE and " + option + " can be standard input");
}

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

void WarnOfSkippedLines(const AlignmentInput& input) { WarnOf(input.file, input.skipped_lines.Note()); }

void ReadPlan(const std::string& file, AlignmentInput* input) {
  ReadAlignment(file, input);
  RequirePlan(*input);
  WarnOfSkippedLines(*input);
}

}  // namespace velmora::cli
