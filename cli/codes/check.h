// What the suite's programs skip or misread in a settings or code file.
#ifndef VELMORA_CLI_CODES_CHECK_H_
#define VELMORA_CLI_CODES_CHECK_H_

#include "cli/codes/line_finding.h"
#include "cli/input/text_lines.h"

namespace velmora::cli {

enum class FileKindOfLines { kObjects, kEnvironment, kLines, kStamp, kSettings, kRig };

// By the file's own name, else by what it ends in: .PAR and .CFG hold settings, all others a stamp.
FileKindOfLines KindByName(const CString& name);

LineFindings CheckTextLines(FileKindOfLines kind, const TextLines& lines);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CODES_CHECK_H_
