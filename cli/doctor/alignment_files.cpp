#include "cli/doctor/checks.h"

#include <cmath>

#include "velmora/alignment/alignment_file.h"
#include "velmora/alignment/area_file.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_text.h"
#include "velmora/alignment/support_check.h"
#include "velmora/common/paths.h"
#include "velmora/platform/console.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

std::string Metres(double value) { return FormatFixed(value, 4); }

std::string Import(const std::string& name) { return "velmora align import ROAD -o " + name; }

// The stations as `align stations` computes them, for a user, where they are the lengths along the road.
// Where arcs make them differ, where they are descending, and where a profile depends on them, nothing.
std::string RecomputedStations(AlignmentFile* file) {
  constexpr double kMost = 0.05;  // m, at each end of a segment: in all no more than CheckPlan allows
  if (file->plan.empty() || !file->profile.empty() || IsDescending(file->plan)) return {};
  CVaglinje& plan = file->set.plan;
  plan.SektBerak(file->plan.front().sek);
  const std::vector<kovltype> points = plan.Points();
  if (!std::isfinite(points.back().sek) || FindStationErrors(points).greatest > kMost) return {};
  return StationText(points.front().sek, false) + " to " + StationText(points.back().sek, false);
}

// The edits of an alignment that correct its findings.
class AlignmentAdvice {
 public:
  // Recomputes the stations of file->set.
  AlignmentAdvice(AlignmentFile* file, const std::string& shown)
      : file_(*file),
        recomputed_(RecomputedStations(file)),
        name_(ShellArgument(shown)),
        force_(file->losses.Count() > 0 || file->skipped.Count() > 0 ? " --force" : "") {}

  Diagnosis Of(const std::string& shown, const Finding& finding) const {
    Diagnosis found = {shown, finding.line, finding.text, "", ""};
    switch (finding.repair) {
      case Repair::kStations:
        found.meaning = "positions are looked up by station, and those near here can be wrong; ";
        if (recomputed_.empty()) {
          found.meaning += "correct the station in an editor, or import the road again";
          break;
        }
        found.meaning += "the command recomputes all stations from the first, as " + recomputed_;
        found.command = "velmora align stations " + name_ + " --start " + Metres(file_.plan.front().sek) +
                        " -o " + name_ + force_;
        break;
      case Repair::kOnePoint:
        found.meaning = "programs can place points here differently; remove one of the two in an editor";
        break;
      case Repair::kFile:
        found.meaning =
            "programs find no place along a single point; restore the file, or import the road again";
        found.command = Import(name_);
        break;
      case Repair::kEndMark:
        found.meaning = kRemoveEndMark;
        break;
      case Repair::kLine:
        found.meaning = "programs can place points here differently; correct the road in its design";
        if (!finding.misread) break;
        found.meaning = "the road is without it; correct the line in an editor";
        if (file_.plan.size() < 2) break;
        found.meaning += ", or remove it with the command";
        found.command = Rewrite();
    }
    return found;
  }

 private:
  // A shift that leaves every point and station where it is.
  std::string Rewrite() const {
    const kovltype& first = file_.plan.front();
    return "velmora align shift " + name_ + " --at " + Metres(first.x) + "," + Metres(first.y) +
           " --station " + Metres(first.sek) + " -o " + name_ + force_;
  }

  const AlignmentFile& file_;
  std::string recomputed_;
  std::string name_;
  std::string force_;
};

}  // namespace

void DiagnoseAlignment(std::string bytes, const std::string& shown, DoctorReport* report) {
  TextReader reader;
  reader.OpenBytes(std::move(bytes));
  AlignmentFile file;
  if (const std::optional<Finding> problem = ReadAlignmentFile(reader, &file)) {
    report->Add({shown, problem->line, problem->text,
                 "no program reads a road from it; restore the file, or import the road again",
                 Import(ShellArgument(shown))});
    return;
  }
  const BoundedFindings found = CheckAlignment(file);
  const AlignmentAdvice advice(&file, shown);
  const std::string lister = "velmora align info --json " + ShellArgument(shown);
  report->AddAll(shown, found.listed, lister,
                 [&](const Finding& finding) { return advice.Of(shown, finding); });
  report->LeaveOut(shown, found.left_out, lister);
}

void DiagnoseSupportPoints(std::string bytes, const std::string& shown, DoctorReport* report) {
  TextReader reader;
  reader.OpenBytes(std::move(bytes));
  const SupportCheck check = CheckSupportPoints(&reader);
  const bool unread = !check.has_header || check.failed;
  report->AddAll(shown, check.findings.listed, "", [&](const Finding& finding) {
    const char* const meaning = unread ? "no program reads support points from it; restore the file"
                                : finding.repair == Repair::kEndMark ? kRemoveEndMark
                                : finding.repair == Repair::kFile
                                    ? "programs have no points after it; restore the file"
                                    : "the point has no level; write it on this line in an editor";
    return Diagnosis{shown, finding.line, finding.text, meaning, ""};
  });
  report->LeaveOut(shown, check.findings.left_out, "");
}

void DiagnoseArea(const CString& path, const std::string& shown, DoctorReport* report) {
  CProjPath project;
  project.m_VlPath = path;
  SplitPath(path, &project.m_DbfKat, nullptr);
  report->AddAll(shown, CheckArea(project), "", [&](const Finding& finding) {
    return Diagnosis{
        shown, finding.line, finding.text,
        "programs have no working area in the project; restore the alignment in this folder, or correct "
        "the line in an editor",
        ""};
  });
}

}  // namespace velmora::cli
