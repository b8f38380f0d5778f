// A row's fields and the numbers in them. All text is UTF-8.
#ifndef VELMORA_LISTS_FIELDS_H_
#define VELMORA_LISTS_FIELDS_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/text/codepage.h"
#include "velmora/text/plain_number.h"

namespace velmora {

enum class DecimalSign { kEither, kPoint, kComma };

// The number that a field consists of. Its digits may stand in groups of three with a blank between (plain,
// U+00A0 or U+202F), and its minus may be U+2212.
std::optional<double> FieldNumber(std::string_view field, DecimalSign decimal);
// The same; false when it is none. ReadGeneralNumber takes the time that any number may take.
bool ReadGeneralNumber(std::string_view field, DecimalSign decimal, double* number);
inline bool ReadFieldNumber(std::string_view field, DecimalSign decimal, double* number) {
  const char point = decimal == DecimalSign::kComma ? ',' : '.';
  const char other = decimal == DecimalSign::kEither ? ',' : point;
  return ReadPlainNumber(field, point, other, number) || ReadGeneralNumber(field, decimal, number);
}

constexpr bool IsBlankByte(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Without blanks at both ends.
inline std::string_view TrimmedField(std::string_view text) {
  while (!text.empty() && IsBlankByte(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlankByte(text.back())) text.remove_suffix(1);
  return text;
}

// Whether one of the separators or the row's end comes next in `text`, blanks apart.
bool FieldEndsAt(std::string_view text, size_t at, std::string_view separators);

// Whether a row with bytes that are not ASCII is in UTF-8. Without an encoding it is where it is valid.
bool IsItsOwnDecoding(std::string_view row, std::optional<TextEncoding> encoding);
// A row as UTF-8: its own bytes where they are, else decoded into *decoded, as Windows-1252 without an
// encoding.
std::string_view DecodeRow(std::string_view row, std::optional<TextEncoding> encoding, std::string* decoded);

// Replaces *fields by the fields of a row, blanks around them dropped: views into the row, or into *unquoted.
// A field that begins with a double quote reaches to the closing one and may hold the separator, line breaks
// and doubled quotes. Splits off `most` fields at most.
void SplitRow(std::string_view row, char separator, size_t most, std::vector<std::string_view>* fields,
              std::string* unquoted);

}  // namespace velmora

#endif  // VELMORA_LISTS_FIELDS_H_
