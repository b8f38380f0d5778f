// MILJKOD.DAT
#include <optional>

#include "cli/codes/code_file.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/code_format.h"
#include "velmora/settings/miljkod_format.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

enum Field { kText, kMax, kStep };

CString Text(int number) {
  CString text;
  text.Format(L"%d", number);
  return text;
}

// The number behind `key` ("max=") in the text, as it stands there.
std::optional<int> NumberBehind(const CString& text, const wchar_t* key) {
  CString lower = text;
  const int at = lower.MakeLower().Find(key);
  int number = 0;
  if (at < 0 || !NumberScanner(text.Mid(at + CString(key).GetLength()).GetView()).Next(&number))
    return std::nullopt;
  return number;
}

void CheckLimits(const TextLine& line, const CString& text, MiljkodLimits limits, LineFindings* findings) {
  const struct {
    const wchar_t* key;
    int read;
  } kLimits[] = {{L"max=", limits.max}, {L"steg=", limits.step}};
  for (const auto& limit : kLimits) {
    const std::optional<int> written = NumberBehind(text, limit.key);
    if (written && *written != limit.read)
      findings->push_back({line.number, ToUtf8(CString(limit.key) + Text(*written)) + " is read as " +
                                            std::to_string(limit.read)});
  }
}

std::optional<int> WholeInteger(const CString& text) {
  std::wstring_view rest = text.GetView();
  int number = 0;
  if (!NumberScanner(rest).Next(&number) || TakeInteger(&rest).GetView() != text.GetView())
    return std::nullopt;
  return number;
}

MiljkodLimits LimitsOf(const CodeEntry& entry) {
  return {WholeInteger(entry.fields[kMax]).value_or(kUsualMax),
          WholeInteger(entry.fields[kStep]).value_or(kUsualStep)};
}

CodeEntry ReadClass(const TextLine& line, const MiljkodLine& parsed, LineFindings* findings) {
  CString text = parsed.text;
  const MiljkodLimits limits = TakeMiljkodLimits(&text);
  CheckLimits(line, parsed.text, limits, findings);
  return {line.number, kClassSection, parsed.name, {text, Text(limits.max), Text(limits.step)}};
}

// Whether a class comes through being written and read.
bool ReadsBack(const CodeEntry& entry) {
  const CString line =
      FormatMiljkodClass(entry.code.GetView(), entry.fields[kText].GetView(), LimitsOf(entry));
  LineFindings findings;
  return ReadClass({}, ParseMiljkodLine(line.GetView()), &findings).SameContent(entry) && findings.empty();
}

CodeEntry ClassEntry(const TextLine& line, const MiljkodLine& parsed, LineFindings* findings) {
  CodeEntry entry = ReadClass(line, parsed, findings);
  if (!ReadsBack(entry))
    findings->push_back({line.number,
                         "would be read otherwise once written again: " + QuotedPart(line.text.GetView()),
                         false});
  return entry;
}

// A rewrite keeps sections 1 to 3 and nothing else.
LineFinding OutsideOfSections(const TextLine& line, int section) {
  const std::string where = section < 0    ? "the header"
                            : section == 0 ? "section 0"
                                           : "section " + std::to_string(section) + ", beyond the third";
  return {line.number, "stands in " + where + ": " + QuotedPart(line.text.GetView()), false};
}

CodeEntries Parse(const TextLines& lines, LineFindings* findings) {
  CodeEntries entries;
  int section = -1;
  for (const TextLine& line : lines) {
    const std::wstring_view text = TrimBlanks(line.text.GetView());
    if (text.empty()) continue;
    if (IsStarLine(line.text.GetView())) {
      ++section;
      if (text != L"*")
        findings->push_back({line.number, "has a text behind the \"*\": " + QuotedPart(text), false});
      continue;
    }
    const MiljkodLine parsed = ParseMiljkodLine(text);
    if (section < kMethodSection || section > kClassSection)
      findings->push_back(OutsideOfSections(line, section));
    else if (parsed.kind == MiljkodLine::Kind::kTooLong)
      findings->push_back({line.number, "is skipped, the code " + QuotedPart(parsed.name.GetView()) +
                                            " being longer than " + std::to_string(kLongestMiljkodName) +
                                            " characters"});
    else if (section == kClassSection)
      entries.push_back(ClassEntry(line, parsed, findings));
    else
      entries.push_back({line.number, section, parsed.name, {parsed.text, CString(), CString()}});
  }
  return entries;
}

void Require(const CodeEntry& entry) {
  RequireWord("the code", entry.code);
  if (entry.code.GetLength() > kLongestMiljkodName)
    RefuseEntry("a code has at most " + std::to_string(kLongestMiljkodName) + " characters");
  RequireOneLine("the text", entry.fields[kText]);
  if (entry.section != kClassSection) {
    if (!entry.fields[kMax].IsEmpty() || !entry.fields[kStep].IsEmpty())
      RefuseEntry("only classes have a maximum and a step");
    return;
  }
  if (!ReadsBack(entry))
    RefuseEntry("the class would not be read back like this; a maximum is 0 to 100000, a step 1 to 100000");
}

void Write(CTundrilInst* facade, const CString&, const CodeEntries& entries) {
  facade->MiljKodWrite(1, L"", L"", 0, 0);
  for (int section = kMethodSection; section <= kClassSection; ++section) {
    const int mode = 2 * section;  // of its entries; the next one ends it
    for (const CodeEntry& entry : entries) {
      if (entry.section != section) continue;
      const MiljkodLimits limits = LimitsOf(entry);
      facade->MiljKodWrite(mode, entry.code, entry.fields[kText], limits.max, limits.step);
    }
    facade->MiljKodWrite(mode + 1, L"", L"", 0, 0);
  }
}

}  // namespace

CodeFile EnvironmentCodes() {
  return {TextFileKind::kEnvironment,
          CProjPath::Miljkod,
          {{"text"}, {"max", true}, {"step", true}},
          Parse,
          Require,
          Write};
}

}  // namespace velmora::cli
