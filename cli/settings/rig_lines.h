// JB23.PAR has its values by line number, so a value needs the lines before its own.
#ifndef VELMORA_CLI_SETTINGS_RIG_LINES_H_
#define VELMORA_CLI_SETTINGS_RIG_LINES_H_

#include <string>

#include "cli/codes/line_finding.h"
#include "cli/context/settings_context.h"
#include "cli/input/text_lines.h"

namespace velmora::cli {

// Only the key's own line is written anew; the others are copied, up to a zero byte.
void KeepFindingsOfWrite(const CString& key, const TextLines& lines, LineFindings* findings);

// Puts the built-in values into the lines up to the key's that the file lacks: a value written to a short
// file would else land on the line behind its last one. Returns a line that says so, empty when nothing
// was missing. Throws a Refusal when the file cannot be written.
std::string FillRigLines(SettingsContext* context, const CString& path, const CString& key);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_SETTINGS_RIG_LINES_H_
