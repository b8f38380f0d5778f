// Wildcards with the rules of the Windows search functions.
//
//   *        any run of characters
//   ?        any one character; before a point and at the end also nothing
//   .        before "?" or "*" also nothing at the end of the name
//   *.       the run ends at the name's last point at the latest
//   NAME.    as NAME; so "*." is every name without a point
//   *.*      every name
#include <algorithm>
#include <string_view>
#include <vector>

#include "velmora/platform/files.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

struct Element {
  enum class Kind { kLetter, kRun, kRunToLastPoint, kOneOrNothing, kPointOrEnd };
  Kind kind;
  wchar_t letter;
};
using Kind = Element::Kind;

bool IsWildcard(wchar_t c) { return c == L'*' || c == L'?'; }

std::vector<Element> ParsePattern(std::wstring_view pattern) {
  std::vector<Element> elements;
  elements.reserve(pattern.size());
  for (size_t i = 0; i < pattern.size(); ++i) {
    const wchar_t c = pattern[i];
    const wchar_t next = i + 1 < pattern.size() ? pattern[i + 1] : L'\0';
    if (c == L'*') {
      elements.push_back({next == L'.' ? Kind::kRunToLastPoint : Kind::kRun, c});
    } else if (c == L'?') {
      elements.push_back({Kind::kOneOrNothing, c});
    } else if (c == L'.' && IsWildcard(next)) {
      elements.push_back({Kind::kPointOrEnd, c});
    } else {
      elements.push_back({Kind::kLetter, LowerLetter(c)});
    }
  }
  const bool is_dots = pattern == L"." || pattern == L"..";
  if (!is_dots && !pattern.empty() && pattern.back() == L'.') elements.pop_back();
  return elements;
}

// Whether an element may match nothing before the character `c` (0: the end).
bool MayMatchNothing(Kind kind, wchar_t c) {
  switch (kind) {
    case Kind::kRun:
    case Kind::kRunToLastPoint:
      return true;
    case Kind::kOneOrNothing:
      return c == L'\0' || c == L'.';
    case Kind::kPointOrEnd:
      return c == L'\0';
    case Kind::kLetter:
      break;
  }
  return false;
}

// The positions in the pattern that are reachable after a part of the name.
using Positions = std::vector<char>;

void SkipOptional(const std::vector<Element>& elements, wchar_t c, Positions* positions) {
  for (size_t i = 0; i < elements.size(); ++i)
    if ((*positions)[i] != 0 && MayMatchNothing(elements[i].kind, c)) (*positions)[i + 1] = 1;
}

Positions Advance(const std::vector<Element>& elements, wchar_t c, bool last_point,
                  const Positions& positions) {
  Positions next(positions.size(), 0);
  for (size_t i = 0; i < elements.size(); ++i) {
    if (positions[i] == 0) continue;
    const Kind kind = elements[i].kind;
    if (kind == Kind::kRun || (kind == Kind::kRunToLastPoint && !last_point)) {
      next[i] = 1;
    } else if ((kind == Kind::kOneOrNothing && c != L'.') || (kind == Kind::kPointOrEnd && c == L'.') ||
               (kind == Kind::kLetter && LowerLetter(c) == elements[i].letter)) {
      next[i + 1] = 1;
    }
  }
  return next;
}

}  // namespace

bool MatchesWildcard(std::wstring_view name, std::wstring_view pattern) {
  if (pattern == L"*.*") return true;
  const std::vector<Element> elements = ParsePattern(pattern);
  const size_t last_point = name.rfind(L'.');
  Positions positions(elements.size() + 1, 0);
  positions[0] = 1;
  for (size_t i = 0; i < name.size(); ++i) {
    SkipOptional(elements, name[i], &positions);
    positions = Advance(elements, name[i], i == last_point, positions);
  }
  SkipOptional(elements, L'\0', &positions);
  return positions.back() != 0;
}

}  // namespace velmora
