// What is wrong with a line of a settings or code file.
#ifndef VELMORA_CLI_CODES_LINE_FINDING_H_
#define VELMORA_CLI_CODES_LINE_FINDING_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/text/string.h"

namespace velmora::cli {

struct LineFinding {
  std::int64_t line = 0;  // 0: the file as a whole
  std::string what;
  bool misread = true;  // reading skips or cuts it, or takes it for something else
  bool lost = true;     // a rewrite of the file leaves it out, or a part of it
};
using LineFindings = std::vector<LineFinding>;

// A part of a line, quoted.
std::string QuotedPart(std::wstring_view text);

// Throws a Refusal, unless forced, when a rewrite of the file would lose something.
void RefuseLosses(const CString& path, const LineFindings& findings, bool force);

// A line beside a listing of the file, which says less than the file does.
void WarnUnread(const CString& path);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CODES_LINE_FINDING_H_
