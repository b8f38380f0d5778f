// A code file as a whole: KODFIL.DAT, MILJKOD.DAT, LINKOD.PAR or a title-block file. Nothing is shown; the
// facade (tundril_inst.h) reads and writes the same lines one a call, with messages.
#ifndef VELMORA_SETTINGS_CODE_FILES_H_
#define VELMORA_SETTINGS_CODE_FILES_H_

#include "velmora/common/finding.h"
#include "velmora/settings/code_lines.h"
#include "velmora/settings/settings_text.h"
#include "velmora/text/string.h"

namespace velmora {

class CodeStream;

struct CodeFile {
  CodeEntries entries;
  Findings findings;        // by line
  bool can_rewrite = true;  // KODFIL.DAT without the line "*" that ends its header cannot be rewritten
};
CodeFile ReadCodeFile(SettingsFileKind kind, const TextLines& lines);

// Replaces the entries of a file. The header of KODFIL.DAT is kept, and its lines "*" between entries; what
// else is not an entry of sections 1 to 3 is lost, and so are entries whose code begins with "*". False when
// the file cannot be written; it is then as it was.
[[nodiscard]] bool ReplaceCodes(SettingsFileKind kind, const CString& path, const CodeEntries& entries);

// Copies the lines of KODFIL.DAT through the first that begins with "*". False when the file cannot be read
// so far.
[[nodiscard]] bool CopyKodfilHeader(const CString& from, CodeStream* to);

// The codes of MILJKOD.DAT that every program relies on and that are not among the entries, case counting.
CodeEntries MissingMiljkods(const CodeEntries& entries);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_CODE_FILES_H_
