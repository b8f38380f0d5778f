#include "velmora/settings/code_format.h"

#include <limits>

#include "velmora/settings/field_text.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

constexpr size_t kDescriptionColumn = 49;  // from 0
constexpr std::wstring_view kPv = L"PV";
constexpr int kLastOfFirstPvGroup = 99;

// The integer at the start of the text, as near as an int comes to it.
std::optional<int> LeadingInteger(std::wstring_view text) {
  int value = 0;
  if (NumberScanner(text).Next(&value)) return value;
  const bool negative = text.starts_with(L'-');
  if (negative || text.starts_with(L'+')) text.remove_prefix(1);
  if (text.empty() || !IsDigit(text.front())) return std::nullopt;
  return negative ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
}

}  // namespace

std::optional<ObjectCode> ParseObjectCode(std::wstring_view line) {
  ObjectCode entry;
  entry.code = TakeWord(&line);
  entry.text = TakeWord(&line);
  if (entry.text.IsEmpty()) return std::nullopt;
  return entry;
}

CString FormatCode(std::wstring_view code, std::wstring_view text) {
  CString line;
  line.Format(L"%s %s\n", code, text);
  return line;
}

std::optional<LineCode> ParseLineCode(std::wstring_view line) {
  LineCode entry;
  std::wstring_view rest = line;
  const std::wstring_view code = TakeWord(&rest);
  entry.word = TakeWord(&rest);
  NumberScanner numbers(rest);
  if (!numbers.Next(&entry.number)) return std::nullopt;
  if (!numbers.Next(&entry.value)) entry.value = 0;
  entry.code = code;
  if (code.starts_with(kPv)) {
    const std::wstring_view number = code.substr(kPv.size());
    if (const std::optional<int> group = LeadingInteger(number)) {
      entry.group = *group <= kLastOfFirstPvGroup ? LineCode::Group::kPvTo99 : LineCode::Group::kPvFrom100;
      entry.code = number;
    }
  }
  CString trimmed(line);
  trimmed.TrimRight();
  entry.text = trimmed.Mid(static_cast<int>(kDescriptionColumn));
  return entry;
}

CString FormatLineCode(std::wstring_view fields, std::wstring_view text) {
  std::wstring line(fields);
  line.resize(kDescriptionColumn, L' ');
  line += text;
  line += L'\n';
  return CString(std::wstring_view(line));
}

std::optional<StampField> ParseStampField(std::wstring_view line) {
  StampField field;
  field.name = TakeWord(&line);
  field.word = TakeWord(&line);
  NumberScanner numbers(line);
  if (!numbers.Next(&field.first) || !numbers.Next(&field.second)) return std::nullopt;
  (void)numbers.Next(&field.third);
  return field;
}

}  // namespace velmora
