// The settings of a project in the scratch folder.
#ifndef VELMORA_FUZZ_SUPPORT_PROJECT_SETTINGS_H_
#define VELMORA_FUZZ_SUPPORT_PROJECT_SETTINGS_H_

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/settings_text.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora::fuzz {

struct ProjectSettings {
  ProjectSettings() {
    project.SetPath(ScratchFolder());
    facade.Init(nullptr, &project);
  }
  CProjPath project;
  CTundrilInst facade;
};

// The lines of a file, whose findings are in order and name lines that exist.
inline TextLines CheckedLines(SettingsFileKind kind, const CString& path) {
  TextLines lines;
  Require(ReadTextLines(path, &lines).empty(), "the file can be read");
  std::int64_t last = 0;
  for (const Finding& finding : CheckSettingsText(kind, lines)) {
    Require(finding.line >= last && finding.line <= static_cast<std::int64_t>(lines.size()) &&
                !finding.text.empty(),
            "a finding names a line");
    last = finding.line;
  }
  return lines;
}

}  // namespace velmora::fuzz

#endif  // VELMORA_FUZZ_SUPPORT_PROJECT_SETTINGS_H_
