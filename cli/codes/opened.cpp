#include "cli/codes/opened.h"

#include <algorithm>

#include "cli/absolute_path.h"
#include "cli/error.h"
#include "velmora/platform/files.h"

namespace velmora::cli {

OpenedCodes::OpenedCodes(const CodesOptions& options, bool may_be_missing) : file_(CodeFileOf(options.kind)) {
  if (file_.name.IsEmpty()) {
    path_ = PathFromSystem(AbsolutePath(options.file));
    if (may_be_missing && !FileOrFolderExists(path_)) return;
  } else {
    workplace_ = std::make_unique<Workplace>(options.project);
    const Place place = workplace_->RequirePlace(file_.name);
    path_ = place.path;
    place_ = place.name;
  }
  entries_ = Read(&findings_);
}

CodeEntries OpenedCodes::Read(LineFindings* findings) const {
  const TextLines lines = TextLinesOf(path_);
  *findings = CheckTextLines(file_.kind, lines);
  LineFindings again;
  return file_.parse(lines, &again);
}

std::string OpenedCodes::Where() const {
  return PathForDisplay(path_) + (place_.empty() ? "" : " (" + place_ + ")");
}

void OpenedCodes::Rewrite(const CodeEntries& entries, bool force) {
  RequireRewritable(force);
  CTundrilInst facade = Facade();
  file_.write(&facade, path_, entries);
  LineFindings findings;
  const CodeEntries now = FileOrFolderExists(path_) ? Read(&findings) : CodeEntries();
  const auto same = [](const CodeEntries& a, const CodeEntries& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const CodeEntry& x, const CodeEntry& y) { return x.SameContent(y); });
  };
  if (same(now, entries)) return;
  if (same(now, entries_)) RefuseUnwritten(path_);
  if (!force)
    throw Refusal(At(PathForDisplay(path_),
                     "was written, and other entries are read from it than were meant; look at them"));
}

}  // namespace velmora::cli
