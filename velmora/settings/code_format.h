// The lines of the code files, each to its record and back. No files, no state.
#ifndef VELMORA_SETTINGS_CODE_FORMAT_H_
#define VELMORA_SETTINGS_CODE_FORMAT_H_

#include <optional>
#include <string_view>

#include "velmora/text/string.h"

namespace velmora {

// A line that begins with "*" ends a header, a section or a file.
constexpr bool IsStarLine(std::wstring_view line) { return !line.empty() && line.front() == L'*'; }

// KODFIL.DAT: the code, a blank, the text.
struct ObjectCode {
  CString code;
  CString text;
};
// Nothing for a line of fewer than two words. Callers rely on getting the text's first word only, however
// much was written (test ObjectCodes).
std::optional<ObjectCode> ParseObjectCode(std::wstring_view line);
// A code with its text, with the line end. An entry of MILJKOD.DAT is the same.
CString FormatCode(std::wstring_view code, std::wstring_view text);

// LINKOD.PAR: code, second word, number and integer, then from column 50 on a description. "PV" with a
// number behind it makes two further groups of codes.
struct LineCode {
  enum class Group { kOrdinary, kPvTo99, kPvFrom100 };
  Group group = Group::kOrdinary;
  CString code;  // without "PV" in the two groups
  CString word;
  double number = 0;
  int value = 0;  // 0 when the line has none
  CString text;
};
// Nothing for a line of fewer than three fields.
std::optional<LineCode> ParseLineCode(std::wstring_view line);
// Fields as they stand, padded to 49 characters, the description behind them. Fields beyond that are
// lost.
CString FormatLineCode(std::wstring_view fields, std::wstring_view text);

// A line of a title-block file: a field's name, a word and three numbers.
struct StampField {
  CString name;
  CString word;
  double first = 0;
  double second = 0;
  double third = 3;  // when the line has none
};
// Nothing for a line of fewer than four fields.
std::optional<StampField> ParseStampField(std::wstring_view line);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_CODE_FORMAT_H_
