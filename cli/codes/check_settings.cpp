#include "cli/codes/check_settings.h"

#include <optional>

#include "velmora/settings/code_format.h"
#include "velmora/settings/field_text.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/key_index.h"
#include "velmora/settings/key_value_format.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

std::optional<LineFinding> CheckKeyValue(const TextLine& line, KeyIndex* seen) {
  const std::wstring_view text = line.text.GetView();
  const KeyValueLine parsed = ParseKeyValueLine(text);
  if (parsed.kind == KeyValueLine::Kind::kNone) {
    if (TrimBlanks(text).empty() || TrimBlanks(text) == L"*") return std::nullopt;
    return LineFinding{line.number, "is no \"key=value\" and so skipped: " + QuotedPart(text),
                       !IsStarLine(text)};
  }
  if (parsed.kind == KeyValueLine::Kind::kBlank) {
    if (parsed.key.size() >= kKeyRoom)
      return LineFinding{line.number, "is skipped, its key being longer than " +
                                          std::to_string(kKeyRoom - 1) + " characters"};
    return LineFinding{line.number, "is skipped, its value being longer than " +
                                        std::to_string(kValueRoom - 2) + " characters"};
  }
  if (TrimBlanks(parsed.key).size() != parsed.key.size())
    return LineFinding{line.number, "the blanks beside the key belong to it: " + QuotedPart(parsed.key), true,
                       false};
  const KeyIndex::Place* first = seen->Find(parsed.key);
  if (first != nullptr)
    return LineFinding{line.number,
                       "is skipped, the key " + QuotedPart(parsed.key) + " standing in line " +
                           std::to_string(first->position) + " already",
                       true, false};
  seen->Add(parsed.key, {nullptr, static_cast<int>(line.number)});
  return std::nullopt;
}

std::optional<LineFinding> CheckRigLine(const TextLine& line) {
  const auto finding = [&](const std::string& what, bool lost = false) {
    return LineFinding{line.number, what, true, lost};
  };
  if (static_cast<size_t>(line.number) > kJb23Lines.size())
    return finding("is line " + std::to_string(line.number) + " of a file of " +
                   std::to_string(kJb23Lines.size()) + ", whose values nothing asks for");
  std::wstring_view rest = line.text.GetView();
  const Jb23Keys keys = Jb23KeysOfLine(static_cast<int>(line.number));
  for (const wchar_t* key : {keys.scale, keys.step}) {
    const std::wstring_view word = TakeWord(&rest);
    const std::string name = ToUtf8(CString(key));
    if (word.empty()) return finding("has no " + name + ", so the built-in value is taken");
    if (!ParseWholeNumber(word)) return finding(name + " is no number: " + QuotedPart(word));
  }
  if (!TrimBlanks(rest).empty())
    return finding("only two words are read: " + QuotedPart(TrimBlanks(rest)) + " is not", true);
  return std::nullopt;
}

}  // namespace

LineFindings CheckKeyValues(const TextLines& lines) {
  LineFindings findings;
  KeyIndex seen;
  for (const TextLine& line : lines)
    if (auto finding = CheckKeyValue(line, &seen)) findings.push_back(*std::move(finding));
  return findings;
}

LineFindings CheckRig(const TextLines& lines) {
  LineFindings findings;
  if (lines.size() == 1 && IsStarLine(lines[0].text.GetView())) return findings;
  for (const TextLine& line : lines)
    if (auto finding = CheckRigLine(line)) findings.push_back(*std::move(finding));
  return findings;
}

}  // namespace velmora::cli
