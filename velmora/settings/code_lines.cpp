#include "velmora/settings/code_lines.h"

#include <algorithm>
#include <limits>

#include "velmora/settings/field_text.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"
#include "velmora/text/quoted.h"

namespace velmora {
namespace {

constexpr size_t kDescriptionColumn = 49;  // from 0
constexpr std::wstring_view kPv = L"PV";
constexpr int kLastOfFirstPvGroup = 99;
constexpr int kLargestLimit = 100'000;

CString Text(int number) {
  CString text;
  text.Format(L"%d", number);
  return text;
}

// Takes a number off the front of the text, as it is written; empty when there is none.
template <class Number>
CString TakeNumber(std::wstring_view* rest) {
  NumberScanner scanner(*rest);
  Number value{};
  if (!scanner.Next(&value)) return {};
  const std::wstring_view text = rest->substr(0, rest->size() - scanner.Rest().size());
  *rest = scanner.Rest();
  return TrimBlanks(text);
}

template <class Number>
bool IsNumber(const CString& text) {
  std::wstring_view rest = text.GetView();
  return !TakeNumber<Number>(&rest).IsEmpty() && rest.empty() && !IsBlank(text[0]);
}

// The integer at the start of the text, clamped to the range of an int.
std::optional<int> LeadingInteger(std::wstring_view text) {
  int value = 0;
  if (NumberScanner(text).Next(&value)) return value;
  const bool negative = text.starts_with(L'-');
  if (negative || text.starts_with(L'+')) text.remove_prefix(1);
  if (text.empty() || !IsDigit(text.front())) return std::nullopt;
  return negative ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
}

// Takes the setting `key` ("steg=") off the end of the text, from the last letter like the key's first on.
// A number out of its bounds gives `usual`.
int TakeLimit(CString* text, const wchar_t* key, int lowest, int usual) {
  CString lower = *text;
  lower.MakeLower();
  const int start = lower.ReverseFind(key[0]);
  if (start <= 0) return usual;
  const CString tail = lower.Mid(start);
  if (tail.Find(key) < 0) return usual;
  int value = usual;
  if (!NumberScanner(tail.Mid(CString(key).GetLength()).GetView()).Next(&value)) value = usual;
  *text = text->Left(start - 1);
  text->TrimRight();
  return value < lowest || value > kLargestLimit ? usual : value;
}

// A limit that is not read as the text has it.
void CheckLimit(const CString& text, const wchar_t* key, int read, const LineFindings& findings) {
  CString lower = text;
  const int at = lower.MakeLower().Find(key);
  int written = 0;
  if (at >= 0 && NumberScanner(text.Mid(at + CString(key).GetLength()).GetView()).Next(&written) &&
      written != read)
    findings.Add(ToUtf8(CString(key) + Text(written)) + " is read as " + std::to_string(read));
}

// The fields of a line code end at `end`, and its value begins at `value`.
void CheckColumns(std::wstring_view line, size_t value, size_t end, const LineFindings& findings) {
  const std::string column = "column " + std::to_string(kDescriptionColumn + 1);
  if (value < end && value >= kDescriptionColumn)
    findings.Add("the number at the start of the description is read as the value",
                 line.substr(value, end - value), true, false);
  else if (end > kDescriptionColumn)
    findings.Add("its fields reach into " + column + ", where the description begins");
  else if (const auto between = TrimBlanks(line.substr(end, kDescriptionColumn - end)); !between.empty())
    findings.Add("is not read, as it is before " + column, between);
}

CString LineFields(const CodeEntry& entry, bool with_value) {
  const CString fields = entry.code + L" " + entry.fields[kLineWord] + L" " + entry.fields[kLineNumber];
  return with_value ? fields + L" " + entry.fields[kLineValue] : fields;
}

// An ordinary code is written without its integer, unless it has one or a number at the start of the
// description would be read as one.
CString LineFields(const CodeEntry& entry) {
  const bool plain =
      entry.fields[kLineValue] == L"0" && GroupOfLineCode(entry.code.GetView()) == LineCodeGroup::kOrdinary;
  if (!plain) return LineFields(entry, true);
  CString fields = LineFields(entry, false);
  const std::optional<CodeEntry> read =
      ParseLineCode(FormatLineCode(fields.GetView(), entry.fields[kLineText].GetView()).GetView());
  return read && read->fields[kLineValue] != L"0" ? LineFields(entry, true) : fields;
}

}  // namespace

CodeSections::CodeSections(SettingsFileKind kind)
    : kind_(kind),
      section_(kind == SettingsFileKind::kObjects || kind == SettingsFileKind::kEnvironment ? -1 : 0) {}

bool CodeSections::HoldsEntries() const {
  if (kind_ == SettingsFileKind::kObjects) return section_ >= 0;
  if (kind_ != SettingsFileKind::kEnvironment) return section_ == 0;
  return section_ >= kMethodSection && section_ <= kClassSection;
}

bool CodeSections::Pass(std::wstring_view line) {
  bool ends = IsStarLine(line);
  if (kind_ == SettingsFileKind::kObjects && section_ >= 0)
    ends = TrimBlanks(line) == L"*";
  else if (kind_ != SettingsFileKind::kEnvironment && section_ > 0)
    ends = false;
  if (ends) ++section_;
  return ends;
}

std::optional<CodeEntry> ParseObjectCode(std::wstring_view line, const LineFindings& findings) {
  const CString code = TakeWord(&line);
  const CString text = TrimBlanks(line);
  if (code.IsEmpty()) return std::nullopt;
  std::wstring_view rest = text.GetView();
  const std::wstring_view first = TakeWord(&rest);
  if (first.empty()) findings.Add("is skipped: no text after the code", code.GetView(), true, false);
  if (!rest.empty()) findings.Add("only the first word of the text is read", first, true, false);
  return CodeEntry{0, 0, code, {text}};
}

std::optional<CodeEntry> ParseMiljkod(std::wstring_view line, bool with_limits,
                                      const LineFindings& findings) {
  const CString name = TakeWord(&line);
  if (name.GetLength() > kLongestMiljkodName)
    findings.Add("is skipped: the code " + Quoted(name.GetView()) + " is longer than " +
                 std::to_string(kLongestMiljkodName) + " characters");
  if (name.IsEmpty() || name.GetLength() > kLongestMiljkodName) return std::nullopt;
  const CString whole = TrimBlanks(line);
  CodeEntry entry{0, 0, name, {whole, CString(), CString()}};
  if (!with_limits) return entry;
  const MiljkodLimits limits = TakeMiljkodLimits(&entry.fields[kMiljkodText]);
  entry.fields[kMiljkodMax] = Text(limits.max);
  entry.fields[kMiljkodStep] = Text(limits.step);
  if (findings.all != nullptr) {
    CheckLimit(whole, L"max=", limits.max, findings);
    CheckLimit(whole, L"steg=", limits.step, findings);
  }
  return entry;
}

std::optional<CodeEntry> ParseLineCode(std::wstring_view line, const LineFindings& findings) {
  std::wstring_view rest = line;
  const CString code = TakeWord(&rest);
  const CString word = TakeWord(&rest);
  const CString number = TakeNumber<double>(&rest);
  if (number.IsEmpty()) {
    findings.Add("is skipped: not a code, word and number", TrimBlanks(line));
    return std::nullopt;
  }
  const CString value = TakeNumber<int>(&rest);
  const size_t end = line.size() - rest.size();
  if (findings.all != nullptr) CheckColumns(line, end - value.GetView().size(), end, findings);
  CString trimmed(line);
  trimmed.TrimRight();
  return CodeEntry{0,
                   0,
                   code,
                   {word, number, value.IsEmpty() ? CString(L"0") : value,
                    trimmed.Mid(static_cast<int>(kDescriptionColumn))}};
}

std::optional<CodeEntry> ParseStampField(std::wstring_view line, const LineFindings& findings) {
  std::wstring_view rest = line;
  CodeEntry entry{0, 0, TakeWord(&rest), {}};
  entry.fields.emplace_back(TakeWord(&rest));
  for (int i = 0; i < 3; ++i) entry.fields.push_back(TakeNumber<double>(&rest));
  if (entry.fields[kStampSecond].IsEmpty()) {
    findings.Add("is skipped: not a name, word and two numbers", TrimBlanks(line));
    return std::nullopt;
  }
  if (entry.fields[kStampThird].IsEmpty()) entry.fields[kStampThird] = L"3";
  if (!TrimBlanks(rest).empty()) findings.Add("is not read, as it follows the numbers", TrimBlanks(rest));
  return entry;
}

std::optional<CodeEntry> ParseCodeLine(SettingsFileKind kind, std::wstring_view line, int section,
                                       const LineFindings& findings) {
  std::optional<CodeEntry> entry;
  if (kind == SettingsFileKind::kObjects)
    entry = ParseObjectCode(line, findings);
  else if (kind == SettingsFileKind::kLines)
    entry = ParseLineCode(line, findings);
  else if (kind == SettingsFileKind::kStamp)
    entry = ParseStampField(line, findings);
  else
    entry = ParseMiljkod(line, section == kClassSection, findings);
  if (entry) entry->section = section;
  return entry;
}

CString FormatCodeLine(SettingsFileKind kind, const CodeEntry& entry) {
  const std::wstring_view code = entry.code.GetView();
  const std::wstring_view first = entry.fields[0].GetView();
  switch (kind) {
    case SettingsFileKind::kObjects:
      return FormatCode(code, first);
    case SettingsFileKind::kEnvironment:
      return entry.section == kClassSection ? FormatMiljkodClass(code, first, LimitsOf(entry))
                                            : FormatCode(code, first);
    case SettingsFileKind::kLines:
      return FormatLineCode(LineFields(entry).GetView(), entry.fields[kLineText].GetView());
    default:
      break;
  }
  CString line = entry.code;
  for (const CString& field : entry.fields) line += L" " + field;
  return line + L"\n";
}

bool IsLostAsStarLine(SettingsFileKind kind, const CodeEntry& entry) {
  return kind != SettingsFileKind::kObjects && IsStarLine(entry.code.GetView());
}

bool ReadsBack(SettingsFileKind kind, const CodeEntry& entry) {
  const CString line = FormatCodeLine(kind, entry);
  const std::wstring_view text = line.GetView().substr(0, line.GetView().size() - 1);
  if (IsLostAsStarLine(kind, entry)) return false;
  Findings findings;
  const std::optional<CodeEntry> read = ParseCodeLine(kind, text, entry.section, {0, &findings});
  return read && read->SameContent(entry) &&
         std::none_of(findings.begin(), findings.end(), [](const Finding& found) { return found.lost; });
}

std::string WhyRefused(SettingsFileKind kind, const CodeEntry& entry) {
  std::string why;
  const auto refuse_if = [&](bool refused, const std::string& text) {
    if (refused && why.empty()) why = text;
  };
  const auto require_word = [&](const std::string& what, std::wstring_view word) {
    refuse_if(word.empty() || std::any_of(word.begin(), word.end(), IsBlank),
              what + " must be one word without blanks");
    refuse_if(IsStarLine(word), what + " must not begin with \"*\", which marks the lines between entries");
  };
  const auto require_number = [&](const CString& text, bool whole) {
    refuse_if(!(whole ? IsNumber<int>(text) : IsNumber<double>(text)),
              Quoted(text.GetView()) + (whole ? " is not a whole number" : " is not a number"));
  };
  const auto require_line = [&](const CString& text) {
    refuse_if(text.GetView().find_first_of(L"\r\n") != std::wstring_view::npos,
              "the text must have no line ends");
  };
  require_word(kind == SettingsFileKind::kStamp ? "the field's name" : "the code", entry.code.GetView());
  switch (kind) {
    case SettingsFileKind::kObjects:
      require_line(entry.fields[kObjectText]);
      refuse_if(entry.fields[kObjectText].IsEmpty(), "a code without a text is skipped when read");
      break;
    case SettingsFileKind::kEnvironment:
      refuse_if(entry.code.GetLength() > kLongestMiljkodName,
                "a code has at most " + std::to_string(kLongestMiljkodName) + " characters");
      require_line(entry.fields[kMiljkodText]);
      refuse_if(entry.section != kClassSection &&
                    !(entry.fields[kMiljkodMax].IsEmpty() && entry.fields[kMiljkodStep].IsEmpty()),
                "only classes have a maximum and a step");
      break;
    case SettingsFileKind::kLines: {
      require_word("the word", entry.fields[kLineWord].GetView());
      require_line(entry.fields[kLineText]);
      require_number(entry.fields[kLineNumber], false);
      require_number(entry.fields[kLineValue], true);
      const int length = LineFields(entry).GetLength();
      refuse_if(static_cast<size_t>(length) >= kDescriptionColumn,
                "code, word and numbers take " + std::to_string(length) +
                    " characters, and the description begins in column " +
                    std::to_string(kDescriptionColumn + 1));
      break;
    }
    default:
      require_word("the word", entry.fields[kStampWord].GetView());
      for (const int number : {kStampFirst, kStampSecond, kStampThird})
        require_number(entry.fields[static_cast<size_t>(number)], false);
      break;
  }
  refuse_if(why.empty() && !ReadsBack(kind, entry),
            entry.section == kClassSection
                ? "the class would not be read back as given; a maximum is 0 to 100000, a step 1 to 100000"
                : "the entry would not be read back as given");
  return why;
}

MiljkodLimits TakeMiljkodLimits(CString* text) {
  MiljkodLimits limits;
  limits.step = TakeLimit(text, L"steg=", 1, kUsualStep);
  limits.max = TakeLimit(text, L"max=", 0, kUsualMax);
  return limits;
}

MiljkodLimits LimitsOf(const CodeEntry& entry) {
  MiljkodLimits limits;
  const auto take = [&](MiljkodField field, int* limit) {
    const CString& text = entry.fields[field];
    if (IsNumber<int>(text)) *limit = *LeadingInteger(text.GetView());
  };
  take(kMiljkodMax, &limits.max);
  take(kMiljkodStep, &limits.step);
  return limits;
}

CString FormatMiljkodClass(std::wstring_view name, std::wstring_view text, MiljkodLimits limits) {
  CString line;
  line.Format(L"%s %s max=%d steg=%d\n", name, text, limits.max, limits.step);
  return line;
}

CString FormatCode(std::wstring_view code, std::wstring_view text) {
  CString line;
  line.Format(L"%s %s\n", code, text);
  return line;
}

LineCodeGroup GroupOfLineCode(std::wstring_view code) {
  if (!code.starts_with(kPv)) return LineCodeGroup::kOrdinary;
  const std::optional<int> number = LeadingInteger(code.substr(kPv.size()));
  if (!number) return LineCodeGroup::kOrdinary;
  return *number <= kLastOfFirstPvGroup ? LineCodeGroup::kPvTo99 : LineCodeGroup::kPvFrom100;
}

CString FormatLineCode(std::wstring_view fields, std::wstring_view text) {
  std::wstring line(fields);
  line.resize(kDescriptionColumn, L' ');
  line += text;
  line += L'\n';
  return CString(std::wstring_view(line));
}

}  // namespace velmora
