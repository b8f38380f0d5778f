#include "cli/codes/check.h"

#include <algorithm>

#include "cli/codes/check_settings.h"
#include "cli/codes/code_file.h"
#include "velmora/project/proj_path.h"

namespace velmora::cli {

TextFileKind KindByName(const CString& name) {
  const struct {
    const wchar_t* name;
    TextFileKind kind;
  } kNames[] = {{CProjPath::Kodfil, TextFileKind::kObjects},
                {CProjPath::Miljkod, TextFileKind::kEnvironment},
                {CProjPath::Linkod, TextFileKind::kLines},
                {CProjPath::Jb23ParNamn, TextFileKind::kRig}};
  for (const auto& known : kNames)
    if (name.CompareNoCase(known.name) == 0) return known.kind;
  const CString end = name.Right(4);
  return end.CompareNoCase(L".PAR") == 0 || end.CompareNoCase(L".CFG") == 0 ? TextFileKind::kSettings
                                                                            : TextFileKind::kStamp;
}

TextFileKind KindCalled(const std::string& name) {
  const auto* const found = std::find(std::begin(kKindNames), std::end(kKindNames), name);
  return static_cast<TextFileKind>(found - std::begin(kKindNames));
}

LineFindings CheckTextLines(TextFileKind kind, const TextLines& lines) {
  LineFindings findings;
  switch (kind) {
    case TextFileKind::kSettings:
      findings = CheckKeyValues(lines);
      break;
    case TextFileKind::kRig:
      findings = CheckRig(lines);
      break;
    default:
      CodeFileOf(kind).parse(lines, &findings);
      break;
  }
  for (const TextLine& line : lines)
    if (line.cut) findings.push_back({line.number, "holds a zero byte, and what follows it is not read"});
  std::stable_sort(findings.begin(), findings.end(),
                   [](const LineFinding& a, const LineFinding& b) { return a.line < b.line; });
  return findings;
}

}  // namespace velmora::cli
