#include "cli/codes/line_finding.h"

#include "cli/terminal/error.h"
#include "velmora/platform/files.h"

namespace velmora::cli {

std::string QuotedPart(std::wstring_view text) { return Quoted(ToUtf8(CString(text))); }

void RefuseLosses(const CString& path, const LineFindings& findings, bool force) {
  if (force) return;
  size_t lost = 0;
  const LineFinding* first = nullptr;
  for (const LineFinding& finding : findings) {
    if (!finding.lost) continue;
    if (first == nullptr) first = &finding;
    ++lost;
  }
  if (first == nullptr) return;
  const std::string more = lost == 1 ? "" : " and " + std::to_string(lost - 1) + " more";
  const std::string what = first->what + "; rewriting the file would lose this" + more +
                           ", so nothing was written; mend it, or --force writes all the same";
  throw Refusal(first->line > 0 ? At(PathForDisplay(path), first->line, what)
                                : At(PathForDisplay(path), what));
}

void WarnUnread(const CString& path) {
  const std::string name = PathForDisplay(path);
  Warn(At(name, "has lines that are not read, or not as they stand; they are told by: velmora codes check " +
                    name));
}

}  // namespace velmora::cli
