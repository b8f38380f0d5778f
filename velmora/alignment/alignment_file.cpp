#include "velmora/alignment/alignment_file.h"

#include "velmora/alignment/rewrite_losses.h"

namespace velmora {

std::optional<Finding> ReadAlignmentFile(TextReader& reader, AlignmentFile* file) {
  int lines = 0;
  LineLosses losses;
  const int result = file->set.Read(reader, [&](int number, LineKind kind, const CString& line) {
    lines = number;
    if (kind == LineKind::kPlanPoint) file->plan_lines.push_back(number);
    if (kind == LineKind::kProfilePoint) file->profile_lines.push_back(number);
    for (const Finding& finding : losses.Check(number, kind, line)) {
      if (finding.misread) file->skipped.Add(finding);
      if (finding.lost) file->losses.Add(finding);
    }
  });
  if (result < 0)
    return Finding{lines + 1, "reading stopped here: a read error, or a line too long for an alignment"};
  file->has_tail = reader.HasTail();
  file->plan = file->set.plan.Points();
  file->profile = file->set.profil.Points();
  if (!file->plan.empty() || !file->profile.empty()) return std::nullopt;
  if (lines == 0) return Finding{0, "is empty; an alignment has a line \"x y bulge station\" for each point"};
  return Finding{0, "is not an alignment: none of its " + std::to_string(lines) +
                        " lines begins with the numbers of a point (x y bulge station)"};
}

std::optional<Finding> ProblemOfPlan(const AlignmentFile& file) {
  if (file.plan.empty())
    return Finding{0, "holds only a profile; a plan is needed (type 1 on the first line)"};
  if (file.plan.size() < 2)
    return Finding{file.plan_lines[0], "is the plan's only point; an alignment needs two or more"};
  return std::nullopt;
}

}  // namespace velmora
