// Letter case without a locale: the same answer on every system and for every user setting.
//
// Covered: ASCII, Latin-1, Latin Extended-A, Greek and Cyrillic. A letter whose other case lies
// outside (ß) or has no partner of its own keeps its form.
#ifndef VELMORA_TEXT_LETTERS_H_
#define VELMORA_TEXT_LETTERS_H_

#include <string_view>

#include "velmora/export.h"

namespace velmora {

// The small or the capital letter of a letter; any other character as it is. @{
wchar_t LowerLetter(wchar_t letter);
wchar_t UpperLetter(wchar_t letter);
// @}

// The blanks of the C library's "C" locale: space, \t, \n, \v, \f, \r.
constexpr bool IsBlank(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }
constexpr bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }  // 0 to 9

// `text` without the blanks at both ends.
std::wstring_view TrimBlanks(std::wstring_view text);

// Below, equal to or above 0 as `a` sorts before, with or after `b`, letters compared in lower case.
VELMORA_API int CompareNoCase(std::wstring_view a, std::wstring_view b);
// The same with letters in upper case, as disks order their names: "_" comes after the letters.
int CompareInCapitals(std::wstring_view a, std::wstring_view b);
// Whether CompareNoCase is 0.
inline bool EqualNoCase(std::wstring_view a, std::wstring_view b) {
  return a.size() == b.size() && CompareNoCase(a, b) == 0;
}

}  // namespace velmora

#endif  // VELMORA_TEXT_LETTERS_H_
