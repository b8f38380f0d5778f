#include "cli/codes/code_file_on_disk.h"

#include <algorithm>

#include "cli/terminal/absolute_path.h"
#include "cli/terminal/error.h"
#include "velmora/platform/files.h"

namespace velmora::cli {

CodeFileOnDisk::CodeFileOnDisk(const CodesOptions& options, bool may_be_missing)
    : file_(CodeFileOf(options.kind)) {
  if (file_.name.IsEmpty()) {
    path_ = PathFromSystem(AbsolutePath(options.file));
    if (may_be_missing && !FileOrFolderExists(path_)) return;
  } else {
    context_ = std::make_unique<SettingsContext>(options.project);
    const Place place = context_->RequirePlace(file_.name);
    path_ = place.path;
    place_ = place.name;
  }
  entries_ = Read(&findings_);
}

CodeEntries CodeFileOnDisk::Read(LineFindings* findings) const {
  const TextLines lines = TextLinesOf(path_);
  *findings = CheckTextLines(file_.kind, lines);
  LineFindings again;
  return file_.parse(lines, &again);
}

std::string CodeFileOnDisk::Where() const {
  return PathForDisplay(path_) + (place_.empty() ? "" : " (" + place_ + ")");
}

void CodeFileOnDisk::Rewrite(const CodeEntries& entries, bool force) {
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
