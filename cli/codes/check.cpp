#include "cli/codes/check.h"

#include <algorithm>

#include "cli/codes/check_settings.h"
#include "velmora/project/proj_path.h"

namespace velmora::cli {

FileKindOfLines KindByName(const CString& name) {
  const struct {
    const wchar_t* name;
    FileKindOfLines kind;
  } kNames[] = {{CProjPath::Kodfil, FileKindOfLines::kObjects},
                {CProjPath::Miljkod, FileKindOfLines::kEnvironment},
                {CProjPath::Linkod, FileKindOfLines::kLines},
                {CProjPath::Jb23ParNamn, FileKindOfLines::kRig}};
  for (const auto& known : kNames)
    if (name.CompareNoCase(known.name) == 0) return known.kind;
  const CString end = name.Right(4);
  return end.CompareNoCase(L".PAR") == 0 || end.CompareNoCase(L".CFG") == 0 ? FileKindOfLines::kSettings
                                                                            : FileKindOfLines::kStamp;
}

LineFindings CheckTextLines(FileKindOfLines kind, const TextLines& lines) {
  LineFindings findings = kind == FileKindOfLines::kRig ? CheckRig(lines) : CheckKeyValues(lines);
  for (const TextLine& line : lines)
    if (line.cut) findings.push_back({line.number, "holds a zero byte, and what follows it is not read"});
  std::stable_sort(findings.begin(), findings.end(),
                   [](const LineFinding& a, const LineFinding& b) { return a.line < b.line; });
  return findings;
}

}  // namespace velmora::cli
