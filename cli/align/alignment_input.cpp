#include "cli/align/alignment_input.h"

#include "cli/input/rows.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/rewrite_losses.h"

namespace velmora::cli {

std::string AlignmentInput::Name() const { return ToUtf8(set.vlNamn); }

void ReadAlignment(const std::string& file, AlignmentInput* input) {
  input->file = file;
  const CString path = PathFromSystem(file);
  TextReader reader;
  const bool open = file == "-" ? reader.OpenStandardInput() : reader.Open(path);
  if (!open) RefuseUnopened(file);
  int lines = 0;
  LineLosses losses;
  const int result = input->set.Read(reader, [&](int number, LineKind kind, const CString& line) {
    lines = number;
    if (kind == LineKind::kPlanPoint) input->plan_lines.push_back(number);
    if (kind == LineKind::kProfilePoint) input->profile_lines.push_back(number);
    for (const Finding& finding : losses.Check(number, kind, line)) {
      if (finding.misread) input->skipped.Add(finding);
      if (finding.lost) input->losses.Add(finding);
    }
  });
  if (result < 0)
    throw Refusal(
        At(file, lines + 1, "reading stopped here: a read error, or a line too long for an alignment"));
  input->has_tail = reader.HasTail();
  input->plan = input->set.plan.Points();
  input->profile = input->set.profil.Points();
  if (!input->plan.empty() || !input->profile.empty()) return;
  if (lines == 0)
    throw Refusal(At(file, "is empty; an alignment has a line \"x y bulge station\" for each point"));
  throw Refusal(At(file, "is not an alignment: none of its " + std::to_string(lines) +
                             " lines begins with the numbers of a point (x y bulge station)"));
}

void RequirePlan(const AlignmentInput& input) {
  if (input.plan.empty())
    throw Refusal(At(input.file, "holds only a profile; a plan is needed (type 1 on the first line)"));
  if (input.plan.size() < 2)
    throw Refusal(
        At(input.file, input.plan_lines[0], "is the plan's only point; an alignment needs two or more"));
}

void RequireProfile(const AlignmentInput& input) {
  if (input.profile.empty())
    throw Refusal(At(input.file, "has no profile; levels need one (type 10, or a section \"Profil\")"));
  if (input.profile.size() < 2)
    throw Refusal(
        At(input.file, input.profile_lines[0], "is the profile's only point; a profile needs two or more"));
}

}  // namespace velmora::cli
