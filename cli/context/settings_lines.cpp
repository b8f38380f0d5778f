#include "cli/context/settings_lines.h"

#include "cli/terminal/error.h"
#include "velmora/platform/files.h"
#include "velmora/settings/settings_reader.h"

namespace velmora::cli {

TextLines TextLinesOf(const CString& path) {
  TextLines lines;
  const std::string problem = ReadTextLines(path, &lines);
  if (!problem.empty()) throw Refusal(At(PathForDisplay(path), problem));
  return lines;
}

Findings MisreadLines(SettingsFileKind kind, const TextLines& lines) {
  Findings findings = CheckSettingsText(kind, lines);
  std::erase_if(findings, [](const Finding& finding) { return !finding.misread; });
  return findings;
}

void RequireCharacters(const CString& path, const CString& text) {
  const std::string why = WhyNotEncodable(path, text);
  if (!why.empty()) throw Refusal(At(PathForDisplay(path), why + "; nothing was written"));
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
