#include <algorithm>

#include "cli/codes/commands.h"
#include "cli/context/settings_lines.h"
#include "cli/terminal/absolute_path.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"

namespace velmora::cli {
namespace {

// A title block can have any name, but is usually STAMPEL1.DAT or the like.
bool HasUsualName(const CString& name) {
  return KindByName(name) != SettingsFileKind::kStamp || name.Left(5).CompareNoCase(L"STAMP") == 0;
}

}  // namespace

void CodesCheck(const CodesOptions& options) {
  const CString path = PathFromSystem(AbsolutePath(options.file));
  const auto* const named = std::find(std::begin(kKindNames), std::end(kKindNames), options.kind_name);
  const TextLines lines = TextLinesOf(path);
  if (options.kind_name.empty() && !HasUsualName(NameOfPath(path)))
    throw Refusal(At(PathForDisplay(path),
                     "is not known by its name; say what it is with --kind objects, environment, lines, "
                     "stamp, settings or rig"));
  const SettingsFileKind kind = options.kind_name.empty()
                                    ? KindByName(NameOfPath(path))
                                    : static_cast<SettingsFileKind>(named - std::begin(kKindNames));
  const Findings findings = CheckSettingsText(kind, lines);
  OutputFile output(options.output.file, {options.file});
  const OutputFormat format = options.output.Format();
  if (format == OutputFormat::kTable && findings.empty()) {
    output.Write(std::string("Nothing is skipped or cut, read as ") + NameOfKind(kind) + ".\n");
    output.Finish();
    return;
  }
  RecordWriter records(output, format, {{"line", "line", true}, {"finding", "finding"}});
  for (const Finding& finding : findings)
    records.Row({finding.line > 0 ? Cell(finding.line) : Cell(), finding.text});
  records.Finish();
  output.Finish();
  if (!findings.empty()) throw ExitWith{1};
}

}  // namespace velmora::cli
