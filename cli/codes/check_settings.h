// What the settings files' readers skip or cut.
#ifndef VELMORA_CLI_CODES_CHECK_SETTINGS_H_
#define VELMORA_CLI_CODES_CHECK_SETTINGS_H_

#include "cli/codes/line_finding.h"
#include "cli/input/text_lines.h"

namespace velmora::cli {

// Lines "key=value". An empty line and one that begins with "*" say nothing and are in order.
LineFindings CheckKeyValues(const TextLines& lines);
// Lines of two numbers, as in JB23.PAR. A file of nothing but a line "*" is in order.
LineFindings CheckRig(const TextLines& lines);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CODES_CHECK_SETTINGS_H_
