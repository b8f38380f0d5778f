#include "velmora/settings/settings_text.h"

#include <algorithm>

#include "velmora/project/proj_path.h"
#include "velmora/settings/code_files.h"
#include "velmora/settings/parameter_files.h"

namespace velmora {

SettingsFileKind KindByName(const CString& name) {
  const struct {
    const wchar_t* name;
    SettingsFileKind kind;
  } kNames[] = {{CProjPath::Kodfil, SettingsFileKind::kObjects},
                {CProjPath::Miljkod, SettingsFileKind::kEnvironment},
                {CProjPath::Linkod, SettingsFileKind::kLines},
                {CProjPath::Jb23ParNamn, SettingsFileKind::kRig}};
  for (const auto& known : kNames)
    if (name.CompareNoCase(known.name) == 0) return known.kind;
  const CString end = name.Right(4);
  return end.CompareNoCase(L".PAR") == 0 || end.CompareNoCase(L".CFG") == 0 ? SettingsFileKind::kSettings
                                                                            : SettingsFileKind::kStamp;
}

Findings CheckSettingsText(SettingsFileKind kind, const TextLines& lines) {
  const bool rig = kind == SettingsFileKind::kRig;
  if (rig || kind == SettingsFileKind::kSettings) return ReadStoredSettings(rig, lines).findings;
  return ReadCodeFile(kind, lines).findings;
}

void CompleteFindings(const TextLines& lines, Findings* findings) {
  for (const TextLine& line : lines)
    if (line.cut) findings->push_back({line.number, "holds a zero byte, and what follows it is not read"});
  std::stable_sort(findings->begin(), findings->end(),
                   [](const Finding& a, const Finding& b) { return a.line < b.line; });
}

}  // namespace velmora
