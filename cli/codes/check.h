// What the suite's programs skip or misread in a settings or code file.
#ifndef VELMORA_CLI_CODES_CHECK_H_
#define VELMORA_CLI_CODES_CHECK_H_

#include "cli/codes/line_finding.h"
#include "cli/input/text_lines.h"

namespace velmora::cli {

enum class TextFileKind { kObjects, kEnvironment, kLines, kStamp, kSettings, kRig };

// By the file's own name, else by what it ends in: .PAR and .CFG hold settings, all others a stamp.
TextFileKind KindByName(const CString& name);

// The kinds by the names that the command has for them, in their order.
inline constexpr const char* kKindNames[] = {"objects", "environment", "lines", "stamp", "settings", "rig"};
inline const char* NameOfKind(TextFileKind kind) { return kKindNames[static_cast<size_t>(kind)]; }
TextFileKind KindCalled(const std::string& name);

LineFindings CheckTextLines(TextFileKind kind, const TextLines& lines);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CODES_CHECK_H_
