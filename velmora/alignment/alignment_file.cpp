#include "velmora/alignment/alignment_file.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace velmora {

std::optional<Finding> ReadAlignmentFile(TextReader& reader, AlignmentFile* file) {
  int lines = 0;
  LineLosses losses;
  const int result = file->set.Read(reader, [&](int number, LineKind kind, const CString& line) {
    lines = number;
    if (kind == LineKind::kPlanPoint) file->plan_lines.push_back(number);
    if (kind == LineKind::kProfilePoint) file->profile_lines.push_back(number);
    const Findings found = losses.Check(number, kind, line);
    file->skipped_lines.Add(kind, found);
    for (const Finding& finding : found) {
      if (finding.misread) file->skipped.Add(finding);
      if (finding.lost) file->losses.Add(finding);
    }
  });
  if (result < 0)
    return Finding{lines + 1, "reading stopped here: a read error, or a line too long for an alignment"};
  if (reader.HasTail()) file->tail = UnreadTail(lines);
  file->plan = file->set.plan.Points();
  file->profile = file->set.profil.Points();
  if (!file->plan.empty() || !file->profile.empty()) return std::nullopt;
  if (lines == 0) return Finding{0, "is empty; an alignment has a line \"x y bulge station\" for each point"};
  return Finding{0, "is not an alignment: none of its " + std::to_string(lines) +
                        " lines begins with the numbers of a point (x y bulge station)"};
}

BoundedFindings CheckAlignment(const AlignmentFile& file) {
  BoundedFindings all = file.skipped;
  if (file.tail) all.Add(*file.tail);
  for (BoundedFindings& more :
       std::array{CheckPlan(file.plan, file.plan_lines), CheckProfile(file.profile, file.profile_lines)}) {
    std::move(more.listed.begin(), more.listed.end(), std::back_inserter(all.listed));
    all.left_out += more.left_out;
  }
  std::stable_sort(all.listed.begin(), all.listed.end(),
                   [](const Finding& a, const Finding& b) { return a.line < b.line; });
  return all;
}

std::optional<Finding> ProblemOfPlan(const AlignmentFile& file) {
  if (file.plan.empty())
    return Finding{0, "holds only a profile; a plan is needed (type 1 on the first line)"};
  if (file.plan.size() < 2)
    return Finding{file.plan_lines[0], "is the plan's only point; an alignment needs two or more"};
  return std::nullopt;
}

}  // namespace velmora
