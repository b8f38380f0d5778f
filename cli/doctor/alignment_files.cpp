#include "cli/doctor/alignment_files.h"

#include "velmora/alignment/alignment_file.h"
#include "velmora/alignment/area_check.h"
#include "velmora/alignment/support_check.h"
#include "velmora/common/paths.h"
#include "velmora/platform/console.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

std::string Metres(double value) { return FormatFixed(value, 4); }

// The edits of an alignment that correct its findings.
class AlignmentAdvice {
 public:
  AlignmentAdvice(const AlignmentFile& file, const std::string& shown)
      : file_(file),
        name_(ShellArgument(shown)),
        force_(file.losses.Count() > 0 || file.skipped.Count() > 0 ? " --force" : "") {}

  Diagnosis Of(const std::string& shown, const Finding& finding) const {
    Diagnosis found = {shown, finding.line, finding.text, "", ""};
    const bool has_plan = file_.plan.size() > 1;
    if (finding.misread) {
      found.meaning = "the road is without it; correct the line in an editor, or remove it with the command";
      if (has_plan) found.command = Rewrite();
    } else if (finding.stations && has_plan) {
      found.meaning =
          "positions are looked up by station, and those near here can be wrong; the command recomputes all "
          "stations from the first";
      found.command = "velmora align stations " + name_ + " --start " + Metres(file_.plan.front().sek) +
                      " -o " + name_ + force_;
    } else {
      found.meaning = "programs can place points here differently; correct the road in its design";
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
                 "velmora align import ROAD -o " + ShellArgument(shown)});
    return;
  }
  const BoundedFindings found = CheckAlignment(file);
  const AlignmentAdvice advice(file, shown);
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
    return Diagnosis{shown, finding.line, finding.text,
                     unread ? "no program reads support points from it; restore the file"
                            : "the point has no level; write it on this line in an editor",
                     ""};
  });
  report->LeaveOut(shown, check.findings.left_out, "");
}

void DiagnoseArea(const CString& path, const std::string& shown, DoctorReport* report) {
  CProjPath project;
  project.m_VlPath = path;
  SplitPath(path, &project.m_DbfKat, nullptr);
  report->AddAll(shown, CheckArea(project), "", [&](const Finding& finding) {
    return Diagnosis{shown, finding.line, finding.text,
                     "programs open the project without its working area; restore the alignment in this "
                     "folder, or correct the line in an editor",
                     ""};
  });
}

}  // namespace velmora::cli
