#include "cli/context/settings_lines.h"

#include <algorithm>
#include <optional>

#include "cli/terminal/error.h"
#include "velmora/platform/files.h"
#include "velmora/platform/text_file.h"
#include "velmora/settings/settings_reader.h"

namespace velmora::cli {
TextLines TextLinesOf(const CString& path) {
  TextLines lines;
  const std::string problem = ReadTextLines(path, &lines);
  if (!problem.empty()) throw Refusal(At(PathForDisplay(path), problem));
  return lines;
}

void RequireCharacters(const CString& path, const CString& text) {
  TextReader reader;
  const TextEncoding encoding = reader.Open(path) ? reader.Encoding() : TextEncoding::kWindows1252;
  std::string bytes;
  if (AppendEncoded(text.GetView(), encoding, &bytes)) return;
  throw Refusal(At(PathForDisplay(path), "the file's encoding lacks a character of " + Quoted(ToUtf8(text)) +
                                             "; nothing was written"));
}

void RefuseLosses(const CString& path, const Findings& findings, bool force) {
  const auto is_lost = [](const Finding& finding) { return finding.lost; };
  const auto first = std::find_if(findings.begin(), findings.end(), is_lost);
  if (force || first == findings.end()) return;
  const auto more = std::count_if(first + 1, findings.end(), is_lost);
  const std::string what = first->text + "; rewriting the file would lose this" +
                           (more == 0 ? "" : " and " + std::to_string(more) + " more") +
                           ", so nothing was written; fix it, or write anyway with --force";
  throw Refusal(first->line > 0 ? At(PathForDisplay(path), first->line, what)
                                : At(PathForDisplay(path), what));
}

void WarnUnread(const CString& path) {
  const std::string name = PathForDisplay(path);
  Warn(At(name, "has lines that are not read, or not as written; to list them: velmora codes check " + name));
}

void RefuseUnwritten(const CString& path) {
  throw Refusal(At(PathForDisplay(path),
                   "cannot be written (no such folder, write-protected, or the disk is full); it is as "
                   "it was"));
}

}  // namespace velmora::cli
