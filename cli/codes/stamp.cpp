// Title-block files.
#include <optional>

#include "cli/codes/code_file.h"
#include "velmora/settings/field_text.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

constexpr wchar_t kUsualThird[] = L"3";

std::optional<CodeEntry> ParseField(const TextLine& line, LineFindings* findings) {
  std::wstring_view rest = line.text.GetView();
  CodeEntry entry{line.number, 0, TakeWord(&rest), {}};
  entry.fields.push_back(TakeWord(&rest));
  for (int i = 0; i < 3; ++i) entry.fields.push_back(TakeReal(&rest));
  if (entry.fields[2].IsEmpty()) {
    findings->push_back({line.number, "is skipped, being no name, word and two numbers: " +
                                          QuotedPart(TrimBlanks(line.text.GetView()))});
    return std::nullopt;
  }
  if (entry.fields[3].IsEmpty()) entry.fields[3] = kUsualThird;
  if (!TrimBlanks(rest).empty())
    findings->push_back(
        {line.number, "is not read, standing behind the numbers: " + QuotedPart(TrimBlanks(rest))});
  return entry;
}

CodeEntries Parse(const TextLines& lines, LineFindings* findings) {
  CodeEntries entries;
  for (const TextLine& line : LinesBeforeEnd(lines, findings))
    if (auto entry = ParseField(line, findings)) entries.push_back(*std::move(entry));
  return entries;
}

void Require(const CodeEntry& entry) {
  RequireWord("the field's name", entry.code);
  RequireWord("the word", entry.fields[0]);
  for (size_t i = 1; i < entry.fields.size(); ++i) {
    std::wstring_view number = entry.fields[i].GetView();
    if (TakeReal(&number).IsEmpty() || !number.empty())
      RefuseEntry(QuotedPart(entry.fields[i].GetView()) + " is no number");
  }
}

void Write(CTundrilInst* facade, const CString& path, const CodeEntries& entries) {
  facade->StampParWrite(path, 1, L"", L"", L"", L"", L"");
  for (const CodeEntry& entry : entries)
    facade->StampParWrite(path, 2, entry.code, entry.fields[0], entry.fields[1], entry.fields[2],
                          entry.fields[3]);
  facade->StampParWrite(path, 3, L"", L"", L"", L"", L"");
}

}  // namespace

CodeFile StampFields() {
  return {TextFileKind::kStamp,
          CString(),
          {{"word"}, {"first", true}, {"second", true}, {"third", true}},
          Parse,
          Require,
          Write};
}

}  // namespace velmora::cli
