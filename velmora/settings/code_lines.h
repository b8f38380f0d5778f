// The lines of the code files, each to an entry and back, and the sections that they are in. No files.
//
//   KODFIL.DAT    code text
//   MILJKOD.DAT   code text [max=N steg=N]
//   LINKOD.PAR    code word number [integer], then from column 50 on a description
//   title block   name word number number [number]
#ifndef VELMORA_SETTINGS_CODE_LINES_H_
#define VELMORA_SETTINGS_CODE_LINES_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/common/finding.h"
#include "velmora/settings/settings_text.h"
#include "velmora/text/string.h"

namespace velmora {

// An entry with its fields as the file has them, whole even where programs read only a part.
struct CodeEntry {
  std::int64_t line = 0;  // from 1; 0 for a new one
  int section = 0;  // of MILJKOD.DAT; of KODFIL.DAT how many lines "*" precede it after the header's; else 0
  CString code;
  std::vector<CString> fields;  // in the order of the enumerations below

  bool SameContent(const CodeEntry& other) const {
    return section == other.section && code == other.code && fields == other.fields;
  }
};
using CodeEntries = std::vector<CodeEntry>;

enum ObjectField { kObjectText };
enum MiljkodField { kMiljkodText, kMiljkodMax, kMiljkodStep };
enum LineCodeField { kLineWord, kLineNumber, kLineValue, kLineText };
enum StampField { kStampWord, kStampFirst, kStampSecond, kStampThird };

// The sections of MILJKOD.DAT, between its lines "*", as the programs use them. A header precedes them.
inline constexpr int kMethodSection = 1;  // sampling and compilation methods
inline constexpr int kInterpretationSection = 2;
inline constexpr int kClassSection = 3;  // contamination classes, with a maximum and a step

// Tracks which section a line is in, from the first line on. KODFIL.DAT: the first line that begins with "*"
// ends the header; after it, each line that is "*" alone begins the next section. MILJKOD.DAT: the header and
// every section end with a line that begins with "*". Other files: only section 0, up to such a line, is
// read.
class CodeSections {
 public:
  explicit CodeSections(SettingsFileKind kind);

  // Of the next line; -1 in a header.
  int Current() const { return section_; }
  // Whether programs look for entries in it.
  bool HoldsEntries() const;
  // Passes over a line. Whether it ends its section: the lines after it are in the next one.
  bool Pass(std::wstring_view line);

 private:
  SettingsFileKind kind_;
  int section_;
};

inline constexpr int kLongestMiljkodName = 4;
inline constexpr int kUsualMax = 100;
inline constexpr int kUsualStep = 20;

// The entry of a line; nothing when the line is skipped. What is missing of a KODFIL.DAT line's text is
// empty, a missing integer "0" and a missing third number "3"; limits are read in the class section only.
std::optional<CodeEntry> ParseCodeLine(SettingsFileKind kind, std::wstring_view line, int section,
                                       const LineFindings& findings);
// The same, for one kind of file, without its findings.
std::optional<CodeEntry> ParseObjectCode(std::wstring_view line, const LineFindings& findings = {});
std::optional<CodeEntry> ParseMiljkod(std::wstring_view line, bool with_limits,
                                      const LineFindings& findings = {});
std::optional<CodeEntry> ParseLineCode(std::wstring_view line, const LineFindings& findings = {});
std::optional<CodeEntry> ParseStampField(std::wstring_view line, const LineFindings& findings = {});

// The entry's line with its line end.
CString FormatCodeLine(SettingsFileKind kind, const CodeEntry& entry);
// Whether the code begins with "*", as it can behind a blank: written without that blank the entry would end
// its section or the file, so a rewrite leaves it out.
bool IsLostAsStarLine(SettingsFileKind kind, const CodeEntry& entry);
// Whether the entry's line is read back as the entry, whole and without a loss.
bool ReadsBack(SettingsFileKind kind, const CodeEntry& entry);
// Why an entry is not to be written, for a user; empty when it can be, and is then read back as it is.
std::string WhyRefused(SettingsFileKind kind, const CodeEntry& entry);

struct MiljkodLimits {
  int max = kUsualMax;
  int step = kUsualStep;
};
// Takes " max=N" and " steg=N" off the end of a class's text, letters without regard to case. Callers rely
// on the maximum being found only before the step, and on 0 being a maximum but no step
// (tests/settings/file_cases.txt).
MiljkodLimits TakeMiljkodLimits(CString* text);
// The limits in the entry's fields; the usual ones for what is not an integer there.
MiljkodLimits LimitsOf(const CodeEntry& entry);
CString FormatMiljkodClass(std::wstring_view name, std::wstring_view text, MiljkodLimits limits);

// A code with its text, in KODFIL.DAT and sections 1 and 2 of MILJKOD.DAT.
CString FormatCode(std::wstring_view code, std::wstring_view text);

// "PV" and a number make two further groups of line codes.
enum class LineCodeGroup { kOrdinary = 1, kPvTo99 = 2, kPvFrom100 = 3 };
LineCodeGroup GroupOfLineCode(std::wstring_view code);
inline constexpr int kPvLength = 2;
// Fields padded to 49 characters, then the description. Fields beyond that are lost.
CString FormatLineCode(std::wstring_view fields, std::wstring_view text);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_CODE_LINES_H_
