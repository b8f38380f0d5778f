#include "velmora/text/letters.h"

#include <algorithm>

namespace velmora {
namespace {

// Latin Extended-A pairs capital and small side by side; in these runs the capital is the even one.
bool IsEvenCapitalRun(unsigned c) {
  return (c >= 0x100 && c <= 0x137 && c != 0x130 && c != 0x131) || (c >= 0x14A && c <= 0x177);
}
bool IsOddCapitalRun(unsigned c) { return (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E); }

template <class Case>
int CompareIn(Case in_case, std::wstring_view a, std::wstring_view b) {
  const size_t common = std::min(a.size(), b.size());
  for (size_t i = 0; i < common; ++i) {
    if (a[i] == b[i]) continue;
    const wchar_t x = in_case(a[i]);
    const wchar_t y = in_case(b[i]);
    if (x != y) return x < y ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

}  // namespace

wchar_t LowerLetter(wchar_t letter) {
  const unsigned c = static_cast<char32_t>(letter);
  if (c < 0x80) return c >= 'A' && c <= 'Z' ? static_cast<wchar_t>(c + 32) : letter;
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return static_cast<wchar_t>(c + 32);
  if (c == 0x178) return 0xFF;
  if (IsEvenCapitalRun(c)) return static_cast<wchar_t>(c | 1U);
  if (IsOddCapitalRun(c)) return static_cast<wchar_t>((c & 1U) != 0 ? c + 1 : c);
  if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) return static_cast<wchar_t>(c + 32);
  if (c >= 0x410 && c <= 0x42F) return static_cast<wchar_t>(c + 32);
  if (c >= 0x400 && c <= 0x40F) return static_cast<wchar_t>(c + 80);
  return letter;
}

wchar_t UpperLetter(wchar_t letter) {
  const unsigned c = static_cast<char32_t>(letter);
  if (c < 0x80) return c >= 'a' && c <= 'z' ? static_cast<wchar_t>(c - 32) : letter;
  if (c == 0xFF) return 0x178;
  if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return static_cast<wchar_t>(c - 32);
  if (IsEvenCapitalRun(c)) return static_cast<wchar_t>(c & ~1U);
  if (IsOddCapitalRun(c)) return static_cast<wchar_t>((c & 1U) == 0 ? c - 1 : c);
  if (c >= 0x3B1 && c <= 0x3C9 && c != 0x3C2) return static_cast<wchar_t>(c - 32);
  if (c >= 0x430 && c <= 0x44F) return static_cast<wchar_t>(c - 32);
  if (c >= 0x450 && c <= 0x45F) return static_cast<wchar_t>(c - 80);
  return letter;
}

std::wstring_view TrimBlanks(std::wstring_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

int CompareNoCase(std::wstring_view a, std::wstring_view b) { return CompareIn(LowerLetter, a, b); }
int CompareInCapitals(std::wstring_view a, std::wstring_view b) { return CompareIn(UpperLetter, a, b); }

}  // namespace velmora
