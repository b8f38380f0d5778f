#include "velmora/project/dir_entry.h"

#include <limits>

#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr int kFirstYear = 1970;
constexpr int kLastYear = 2037;
constexpr size_t kShortNameLength = 12;

// 0 after the end of a full field.
wchar_t At(std::span<const wchar_t> field, size_t i) { return i < field.size() ? field[i] : L'\0'; }

// As SortUpper for one letter, without a copy: sorting compares each name about twenty times.
char32_t Raised(wchar_t c) {
  return static_cast<char32_t>(c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c);
}

bool TextIsBelow(std::span<const wchar_t> a, std::span<const wchar_t> b) {
  for (size_t i = 0;; ++i) {
    const char32_t x = Raised(At(a, i));
    const char32_t y = Raised(At(b, i));
    if (x != y) return x < y;
    if (x == 0) return false;
  }
}

int ComesBeforeAscending(std::span<const wchar_t> marked, std::span<const wchar_t> current) {
  const std::int64_t m = NumberAtStart(marked);
  const std::int64_t c = NumberAtStart(current);
  return m < c || (m == c && TextIsBelow(marked, current)) ? 1 : 0;
}

// Required: the descending order compares the numbers only, and equal numbers give "before" (test
// FallingNamesWithoutNumberComeReversed).
int ComesBeforeDescending(std::span<const wchar_t> marked, std::span<const wchar_t> current) {
  return NumberAtStart(marked) >= NumberAtStart(current) ? 1 : 0;
}

wchar_t* PutNumber(int number, int digits, wchar_t* at) {
  for (int i = digits - 1; i >= 0; --i, number /= 10) at[i] = static_cast<wchar_t>(L'0' + number % 10);
  return at + digits;
}

void PutTime(const FileTime& time, dirsorttype* entry) {
  if (time.month == 0) return;  // unknown
  const bool shown = time.year >= kFirstYear && time.year <= kLastYear;
  wchar_t* at = PutNumber(shown ? time.year : kFirstYear, 4, entry->datum);
  *at++ = L'-';
  at = PutNumber(shown ? time.month : 1, 2, at);
  *at++ = L'-';
  PutNumber(shown ? time.day : 1, 2, at);
  at = PutNumber(time.hour, 2, entry->tid);
  *at++ = L'.';
  PutNumber(time.minute, 2, at);
}

int ListedSize(std::uint64_t bytes) {
  const auto low = static_cast<std::int32_t>(static_cast<std::uint32_t>(bytes));
  return low >= 1 && low <= 999 ? 1000 : low;
}

}  // namespace

std::int64_t NumberAtStart(std::span<const wchar_t> field) {
  constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
  size_t i = 0;
  while (IsBlank(At(field, i))) ++i;
  const bool negative = At(field, i) == L'-';
  if (negative || At(field, i) == L'+') ++i;
  if (!IsDigit(At(field, i))) return kNoNumber;
  std::int64_t value = 0;
  for (; IsDigit(At(field, i)); ++i) {
    const int digit = static_cast<int>(field[i] - L'0');
    value = value > (kMax - digit) / 10 ? kMax : value * 10 + digit;
  }
  return negative ? -value : value;
}

int CompareEntries(const dirsorttype& marked, const dirsorttype& current, int key) {
  switch (key) {
    case 1:
      return ComesBeforeAscending(marked.namn, current.namn);
    case -1:
      return ComesBeforeDescending(marked.namn, current.namn);
    case 2:
    case -2:  // required: ascending here too (test SizesRiseUnderBothKeys)
      return (marked.filstorlek < current.filstorlek) - (marked.filstorlek > current.filstorlek);
    case 3:
      return ComesBeforeAscending(marked.datum, current.datum);
    case -3:
      return ComesBeforeDescending(marked.datum, current.datum);
    default:
      return 0;
  }
}

void FillEntry(const FoundFile& file, dirsorttype* entry) {
  PutTime(file.status.modified_local, entry);
  CopyToField(entry->namn, file.name.GetView());
  const std::wstring_view short_name =
      file.short_name.IsEmpty() ? file.name.GetView().substr(0, kShortNameLength) : file.short_name.GetView();
  CopyToField(entry->kortnamn, short_name);
  entry->filstorlek = ListedSize(file.status.size);
}

std::wstring_view RequiredEnding(std::wstring_view pattern) {
  const size_t point = pattern.rfind(L'.');
  if (point == std::wstring_view::npos || pattern.back() == L'*' || pattern.back() == L'?') return {};
  return pattern.substr(point);
}

bool EndsWithNoCase(std::wstring_view name, std::wstring_view ending) {
  return name.size() >= ending.size() && EqualNoCase(name.substr(name.size() - ending.size()), ending);
}

}  // namespace velmora
