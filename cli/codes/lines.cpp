// LINKOD.PAR
#include "cli/codes/code_file.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/code_format.h"
#include "velmora/settings/field_text.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

enum Field { kWord, kNumber, kValue, kText };

// Characters before the description.
size_t DescriptionColumn() {
  static const size_t column = FormatLineCode({}, {}).GetView().size() - 1;
  return column;
}

// The line's words as they are written; those that are missing are empty.
struct Words {
  CString code;
  CString word;
  CString number;
  CString value;
  size_t value_start = 0;
  size_t end = 0;  // behind the last one
};

Words SplitLine(std::wstring_view line) {
  Words words;
  std::wstring_view rest = line;
  words.code = TakeWord(&rest);
  words.word = TakeWord(&rest);
  words.number = TakeReal(&rest);
  words.value = TakeInteger(&rest);
  words.end = line.size() - rest.size();
  words.value_start = words.end - words.value.GetView().size();
  return words;
}

void CheckColumns(const TextLine& line, const Words& words, LineFindings* findings) {
  const std::wstring_view text = line.text.GetView();
  const size_t column = DescriptionColumn();
  const std::string at = "column " + std::to_string(column + 1);
  if (!words.value.IsEmpty() && words.value_start >= column)
    findings->push_back({line.number,
                         "the number that its description begins with is read as the value: " +
                             QuotedPart(words.value.GetView()),
                         true, false});
  else if (words.end > column)
    findings->push_back({line.number, "its fields reach into " + at + ", where the description begins"});
  else if (const auto between = TrimBlanks(text.substr(words.end, column - words.end)); !between.empty())
    findings->push_back({line.number, "is not read, standing before " + at + ": " + QuotedPart(between)});
}

CodeEntries Parse(const TextLines& lines, LineFindings* findings) {
  CodeEntries entries;
  for (const TextLine& line : LinesBeforeEnd(lines, findings)) {
    const std::wstring_view text = line.text.GetView();
    const std::optional<LineCode> code = ParseLineCode(text);
    if (!code) {
      findings->push_back(
          {line.number, "is skipped, being no code, word and number: " + QuotedPart(TrimBlanks(text))});
      continue;
    }
    const Words words = SplitLine(text);
    CheckColumns(line, words, findings);
    const CString value = words.value.IsEmpty() ? CString(L"0") : words.value;
    entries.push_back({line.number, 0, words.code, {words.word, words.number, value, code->text}});
  }
  return entries;
}

CString Joined(const CodeEntry& entry, bool with_value) {
  CString fields = entry.code + L" " + entry.fields[kWord] + L" " + entry.fields[kNumber];
  return with_value ? fields + L" " + entry.fields[kValue] : fields;
}

bool IsNumbered(const CodeEntry& entry) {
  const std::optional<LineCode> read = ParseLineCode(Joined(entry, false).GetView());
  return read && read->group != LineCode::Group::kOrdinary;
}

// An ordinary code is written without a value. One that it has, or that a number at the start of the
// description would be taken for, goes with the number before it.
bool NeedsValue(const CodeEntry& entry) {
  if (entry.fields[kValue] != L"0" || IsNumbered(entry)) return true;
  const std::optional<LineCode> read =
      ParseLineCode(FormatLineCode(Joined(entry, false).GetView(), entry.fields[kText].GetView()).GetView());
  return read && read->value != 0;
}

void Require(const CodeEntry& entry) {
  RequireWord("the code", entry.code);
  RequireWord("the word", entry.fields[kWord]);
  RequireOneLine("the text", entry.fields[kText]);
  std::wstring_view number = entry.fields[kNumber].GetView();
  std::wstring_view value = entry.fields[kValue].GetView();
  if (TakeReal(&number).IsEmpty() || !number.empty())
    RefuseEntry(QuotedPart(entry.fields[kNumber].GetView()) + " is no number");
  if (TakeInteger(&value).IsEmpty() || !value.empty())
    RefuseEntry(QuotedPart(entry.fields[kValue].GetView()) + " is no whole number");
  const CString fields = Joined(entry, NeedsValue(entry));
  if (fields.GetView().size() >= DescriptionColumn())
    RefuseEntry("code, word and numbers take " + std::to_string(fields.GetView().size()) +
                " characters, and the description begins in column " +
                std::to_string(DescriptionColumn() + 1));
}

void Write(CTundrilInst* facade, const CString&, const CodeEntries& entries) {
  constexpr int kPrefix = 2;  // "PV", which the library writes
  facade->LinkodWrite(1, L"", L"", L"", L"", L"");
  for (const CodeEntry& entry : entries) {
    const CString& word = entry.fields[kWord];
    const CString& number = entry.fields[kNumber];
    const CString& value = entry.fields[kValue];
    if (IsNumbered(entry))
      facade->LinkodWrite(4, entry.code.Mid(kPrefix), word, number, entry.fields[kText], value);
    else
      facade->LinkodWrite(2, entry.code, word, NeedsValue(entry) ? number + L" " + value : number,
                          entry.fields[kText], L"");
  }
  facade->LinkodWrite(5, L"", L"", L"", L"", L"");
}

}  // namespace

CodeFile LineCodes() {
  return {TextFileKind::kLines,
          CProjPath::Linkod,
          {{"word"}, {"number", true}, {"value", true}, {"text"}},
          Parse,
          Require,
          Write};
}

}  // namespace velmora::cli
