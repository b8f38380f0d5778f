#include "velmora/lists/fields.h"

#include <algorithm>

#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

bool IsBlankOfNumber(wchar_t c) { return IsBlank(c) || c == 0xA0 || c == 0x202F; }

// Takes the blanks out of "6 652 231.5": groups of three digits behind a first one of one to three. Other
// blanks stay, and what has them is not a number.
void JoinGroups(std::wstring* text) {
  size_t at = text->starts_with(L'-') || text->starts_with(L'+') ? 1 : 0;
  const auto digits = [&](size_t from) {
    size_t end = from;
    while (end < text->size() && IsDigit((*text)[end])) ++end;
    return end - from;
  };
  const size_t first = digits(at);
  if (first < 1 || first > 3) return;
  for (at += first; at < text->size() && IsBlankOfNumber((*text)[at]) && digits(at + 1) == 3; at += 3)
    text->erase(at, 1);
}

// Of any field.
std::optional<double> GeneralNumber(std::string_view field, DecimalSign decimal) {
  constexpr wchar_t kMinus = 0x2212;
  constexpr size_t kLongestGrouped = 100;
  std::wstring text = WideFromUtf8(field);
  const auto first = std::find_if_not(text.begin(), text.end(), IsBlankOfNumber);
  text.erase(text.begin(), first);
  while (!text.empty() && IsBlankOfNumber(text.back())) text.pop_back();
  if (text.starts_with(kMinus)) text[0] = L'-';
  if (text.size() <= kLongestGrouped) JoinGroups(&text);
  const bool has_point = text.find(L'.') != std::wstring::npos;
  const bool has_comma = text.find(L',') != std::wstring::npos;
  if ((has_point && has_comma) || (has_point && decimal == DecimalSign::kComma) ||
      (has_comma && decimal == DecimalSign::kPoint))
    return std::nullopt;
  std::replace(text.begin(), text.end(), L',', L'.');
  return ParseWholeNumber(text);
}

}  // namespace

bool ReadGeneralNumber(std::string_view field, DecimalSign decimal, double* number) {
  const std::optional<double> read = GeneralNumber(field, decimal);
  if (read) *number = *read;
  return read.has_value();
}

std::optional<double> FieldNumber(std::string_view field, DecimalSign decimal) {
  double number = 0;
  if (!ReadFieldNumber(field, decimal, &number)) return std::nullopt;
  return number;
}

bool FieldEndsAt(std::string_view text, size_t at, std::string_view separators) {
  const auto ends = [&](char c) { return c == '\n' || separators.find(c) != std::string_view::npos; };
  while (at < text.size() && IsBlankByte(text[at]) && !ends(text[at])) ++at;
  return at >= text.size() || ends(text[at]);
}

bool IsItsOwnDecoding(std::string_view row, std::optional<TextEncoding> encoding) {
  return encoding != TextEncoding::kWindows1252 && IsValidUtf8(row);
}

std::string_view DecodeRow(std::string_view row, std::optional<TextEncoding> encoding, std::string* decoded) {
  unsigned char all = 0;
  for (const char c : row) all |= static_cast<unsigned char>(c);
  if (all < 0x80 || IsItsOwnDecoding(row, encoding)) return row;
  std::wstring text;
  AppendDecoded(row, encoding.value_or(TextEncoding::kWindows1252), &text);
  *decoded = Utf8FromWide(text);
  return *decoded;
}

void SplitRow(std::string_view row, char separator, size_t most, std::vector<std::string_view>* fields,
              std::string* unquoted) {
  fields->clear();
  unquoted->clear();
  while (fields->size() < most) {
    size_t start = 0;
    while (start < row.size() && IsBlankByte(row[start]) && row[start] != separator) ++start;
    if (start < row.size() && row[start] == '"') {
      unquoted->reserve(unquoted->size() + row.size());  // once: the views into it stay
      const size_t begin = unquoted->size();
      row.remove_prefix(start + 1);
      for (; !row.empty(); row.remove_prefix(1)) {
        if (row.front() == '"') {
          if (row.substr(0, 2) != "\"\"") break;
          row.remove_prefix(1);
        }
        *unquoted += row.front();
      }
      if (!row.empty()) row.remove_prefix(1);
      const size_t end = std::min(row.find(separator), row.size());
      *unquoted += TrimmedField(row.substr(0, end));
      fields->push_back(std::string_view(*unquoted).substr(begin));
      row.remove_prefix(end);
    } else {
      const size_t end = std::min(row.find(separator), row.size());
      fields->push_back(TrimmedField(row.substr(0, end)));
      row.remove_prefix(end);
    }
    if (row.empty()) return;
    row.remove_prefix(1);
  }
}

}  // namespace velmora
