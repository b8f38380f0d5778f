#include "velmora/project/dir_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <cwchar>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "tests/support/print_text.h"
#include "tests/support/test_files.h"
#include "velmora/project/dir_entry.h"

namespace velmora {
namespace {

using Names = std::vector<std::wstring>;

template <class List>
Names NamesOf(List& list) {
  Names names;
  for (bool more = list.Home() == 0; more; more = list++ != nullptr) names.emplace_back(list.pael->namn);
  return names;
}

void AddNames(const Names& names, CDirSort* list) {
  for (const std::wstring& name : names) {
    dirsorttype record{};
    CopyToField(record.namn, name);
    list->Ny(1, &record);
  }
}

Names Listed(const CString& pattern, int key, int folders = 0) {
  CDirSort list;
  EXPECT_EQ(list.Init(pattern, key, 1, 0, folders), 0);
  return NamesOf(list);
}

FoundFile File(const wchar_t* name, std::uint64_t size, FileTime changed) {
  FoundFile file;
  file.name = name;
  file.status.size = size;
  file.status.modified_local = changed;
  return file;
}

dirsorttype EntryOf(const FoundFile& file) {
  dirsorttype entry{};
  FillEntry(file, &entry);
  return entry;
}

constexpr FileTime kSomeDay{.year = 2024, .month = 3, .day = 9, .hour = 8, .minute = 5, .second = 59};

TEST(DirEntry, ANumberIsReadFromTheStartOfAName) {
  constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
  const struct {
    const wchar_t* text;
    std::int64_t number;
  } kCases[] = {
      {L"12.DAT", 12},
      {L"007", 7},
      {L"0", 0},
      {L"-5.DAT", -5},
      {L"+3A", 3},
      {L" \t 41x", 41},
      {L"A1", kNoNumber},
      {L"", kNoNumber},
      {L"- 5", kNoNumber},
      {L"-.5", kNoNumber},
      {L"\u0661", kNoNumber},
      {L"20240115123000.TXT", 20240115123000},
      {L"99999999999999999999", kMax},
      {L"-99999999999999999999", -kMax},
  };
  for (const auto& c : kCases)
    EXPECT_EQ(NumberAtStart({c.text, std::wcslen(c.text)}), c.number) << ToUtf8(c.text);
}

// The field of a client's record may lack its terminating zero.
TEST(DirEntry, AFullFieldEndsAtItsEnd) {
  dirsorttype full{};
  std::fill(std::begin(full.namn), std::end(full.namn), L'7');
  dirsorttype lower = full;
  lower.namn[259] = L'6';
  EXPECT_EQ(NumberAtStart(full.namn), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(CompareEntries(lower, full, 1), 1);
  EXPECT_EQ(CompareEntries(full, full, 1), 0);
}

TEST(DirEntry, DayAndTimeAreThoseOfTheFileBetween1970And2037) {
  const struct {
    FileTime changed;
    const wchar_t* day;
    const wchar_t* time;
  } kCases[] = {
      {kSomeDay, L"2024-03-09", L"08.05"},
      {{1970, 1, 1, 0, 0, 0}, L"1970-01-01", L"00.00"},
      {{1969, 12, 31, 23, 59, 59}, L"1970-01-01", L"23.59"},
      {{1965, 6, 7, 12, 30, 0}, L"1970-01-01", L"12.30"},
      {{2037, 12, 31, 1, 2, 3}, L"2037-12-31", L"01.02"},
      {{2040, 5, 6, 17, 4, 0}, L"1970-01-01", L"17.04"},
      {{30828, 9, 14, 2, 48, 5}, L"1970-01-01", L"02.48"},
      {{}, L"", L""},  // no time that a calendar has
  };
  for (const auto& c : kCases) {
    const dirsorttype entry = EntryOf(File(L"A", 0, c.changed));
    EXPECT_STREQ(entry.datum, c.day);
    EXPECT_STREQ(entry.tid, c.time);
  }
}

TEST(DirEntry, SmallSizesShowAsAThousand) {
  const struct {
    std::uint64_t size;
    int shown;
  } kCases[] = {{0, 0},
                {1, 1000},
                {500, 1000},
                {999, 1000},
                {1000, 1000},
                {1001, 1001},
                {2147483647, 2147483647},
                {2147483648, -2147483647 - 1},
                {4294967296, 0},
                {4294967796, 1000}};
  for (const auto& c : kCases) EXPECT_EQ(EntryOf(File(L"A", c.size, kSomeDay)).filstorlek, c.shown) << c.size;
}

TEST(DirEntry, TheShortNameIsTheSystemsOrTwelveCharacters) {
  FoundFile file = File(L"ABCDEFGHIJKLMNOPQRST", 0, kSomeDay);
  EXPECT_STREQ(EntryOf(file).namn, L"ABCDEFGHIJKLMNOPQRST");
  EXPECT_STREQ(EntryOf(file).kortnamn, L"ABCDEFGHIJKL");
  file.short_name = L"ABCDEF~1";
  EXPECT_STREQ(EntryOf(file).kortnamn, L"ABCDEF~1");
  EXPECT_STREQ(EntryOf(File(L"TWELVE12.DAT", 0, kSomeDay)).kortnamn, L"TWELVE12.DAT");
  const std::wstring long_name(300, L'x');
  EXPECT_EQ(std::wcslen(EntryOf(File(long_name.c_str(), 0, kSomeDay)).namn), 259U);
}

TEST(DirEntry, APatternRequiresItsEnding) {
  const struct {
    const wchar_t* pattern;
    const wchar_t* ending;
  } kCases[] = {{L"C:\\P\\*.DAT", L".DAT"}, {L"C:\\P\\*.*", L""}, {L"C:\\P\\*.DA?", L""},
                {L"C:\\P\\*", L""},         {L"", L""},           {L"C:\\P.1\\A", L".1\\A"},
                {L"A.B.C", L".C"},          {L"A.", L"."}};
  for (const auto& c : kCases) EXPECT_EQ(CString(RequiredEnding(c.pattern)), c.ending) << ToUtf8(c.pattern);
  EXPECT_TRUE(EndsWithNoCase(L"ROAD.dat", L".DAT"));
  EXPECT_TRUE(EndsWithNoCase(L".DAT", L".dat"));
  EXPECT_FALSE(EndsWithNoCase(L"ROAD.DATX", L".DAT"));
  EXPECT_FALSE(EndsWithNoCase(L"AT", L".DAT"));
}

// The order of a listing, told as slowly as it can be told: each place goes to the candidate that no
// later one displaced in a walk over all that are left.
class SlowListing {
 public:
  static Names Sorted(std::vector<dirsorttype> records, int key) {
    Names names;
    while (!records.empty()) {
      size_t best = 0;
      for (size_t i = 1; i < records.size(); ++i)
        if (MarkedFirst(records[i], records[best], key) >= 1) best = i;
      names.emplace_back(records[best].namn);
      records.erase(records.begin() + static_cast<std::ptrdiff_t>(best));
    }
    return names;
  }

 private:
  static std::wstring Upper(const wchar_t* text) {
    std::wstring upper = text;
    for (wchar_t& c : upper)
      if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - 32);
    return upper;
  }
  static long Number(const std::wstring& text) {
    wchar_t* end = nullptr;
    const long number = std::wcstol(text.c_str(), &end, 10);
    return end == text.c_str() ? 99999999 : number;
  }
  static int MarkedFirst(const dirsorttype& marked, const dirsorttype& current, int key) {
    if (key == 2 || key == -2)
      return marked.filstorlek < current.filstorlek ? 1 : marked.filstorlek == current.filstorlek ? 0 : -1;
    const bool by_name = key == 1 || key == -1;
    if (!by_name && key != 3 && key != -3) return 0;
    const std::wstring m = Upper(by_name ? marked.namn : marked.datum);
    const std::wstring c = Upper(by_name ? current.namn : current.datum);
    if (key < 0) return Number(m) < Number(c) ? 0 : 1;
    if (Number(m) != Number(c)) return Number(m) < Number(c) ? 1 : 0;
    return m < c ? 1 : 0;
  }
};

dirsorttype RandomRecord(std::mt19937* random, int number) {
  static constexpr wchar_t kLetters[] = L"aAbBzZ019 -.å\u00C5_";
  const auto pick = [&](int n) { return std::uniform_int_distribution(0, n - 1)(*random); };
  std::wstring name;
  for (int length = pick(5); length > 0; --length) name += kLetters[pick(15)];
  dirsorttype record{};
  // The number makes the name its own; names of one length compare before they come to it.
  CopyToField(record.namn, name + L"|" + std::to_wstring(number));
  CString day;
  day.Format(L"%4d-%02d-%02d", 2000 + pick(4), 1 + pick(3), 1 + pick(3));
  if (pick(8) != 0) CopyToField(record.datum, day.GetView());
  record.filstorlek = pick(6) * 1000 - 1000;
  return record;
}

TEST(DirSort, OrderIsThatOfTheRankingForEveryKey) {
  std::mt19937 random(20240309);
  for (const int size : {1, 2, 3, 7, 64, 150}) {
    std::vector<dirsorttype> records;
    for (int i = 0; i < size; ++i) records.push_back(RandomRecord(&random, i));
    for (const int key : {1, -1, 2, -2, 3, -3, 0, 4, 100}) {
      CDirSort list;
      for (const dirsorttype& record : records) list.Ny(1, &record);
      ASSERT_EQ(list.Sortera(key), 0);
      EXPECT_EQ(NamesOf(list), SlowListing::Sorted(records, key)) << size << " records, key " << key;
    }
  }
}

TEST(DirSort, NumbersComeFirstThenNamesWithoutRegardToAToZ) {
  const TemporaryFolder folder;
  for (const wchar_t* name : {L"10.DAT", L"9.DAT", L"b.DAT", L"A.DAT"}) WriteBytes(folder.File(name), "");
  EXPECT_EQ(Listed(folder.File(L"*.DAT"), 1), (Names{L"9.DAT", L"10.DAT", L"A.DAT", L"b.DAT"}));
}

TEST(DirSort, FallingNamesWithoutNumberComeReversed) {
  CDirSort list;
  AddNames({L"10.DAT", L"A.DAT", L"9.DAT", L"b.DAT", L"010.DAT"}, &list);
  list.Sortera(-1);
  EXPECT_EQ(NamesOf(list), (Names{L"b.DAT", L"A.DAT", L"010.DAT", L"10.DAT", L"9.DAT"}));
}

TEST(DirSort, SizesRiseUnderBothKeys) {
  const TemporaryFolder folder;
  WriteBytes(folder.File(L"A"), std::string(5000, 'x'));
  WriteBytes(folder.File(L"B"), std::string(500, 'x'));
  WriteBytes(folder.File(L"C"), "");
  WriteBytes(folder.File(L"D"), std::string(1000, 'x'));
  for (const int key : {2, -2}) EXPECT_EQ(Listed(folder.File(L"*"), key), (Names{L"C", L"B", L"D", L"A"}));
}

TEST(DirSort, OnlyNamesWithThePatternsEndingAreListed) {
  const TemporaryFolder folder;
  for (const wchar_t* name : {L"road.dat", L"ROAD.DATX", L"dat", L"x.DAT.bak"})
    WriteBytes(folder.File(name), "");
  EXPECT_EQ(Listed(folder.File(L"*.DAT"), 1), (Names{L"road.dat"}));
  EXPECT_EQ(Listed(folder.File(L"*.DAT*"), 1), (Names{L"road.dat", L"ROAD.DATX", L"x.DAT.bak"}));
  EXPECT_EQ(Listed(folder.File(L"*"), 1).size(), 4U);
  EXPECT_EQ(Listed(folder.File(L"*.*"), 1).size(), 4U);
}

TEST(DirSort, FoldersAndTheDotsAreListedOnDemandOnly) {
  const TemporaryFolder folder;
  WriteBytes(folder.File(L"file"), "");
  ASSERT_TRUE(MakeFolder(folder.File(L"sub")));
  EXPECT_EQ(Listed(folder.File(L"*"), 0), (Names{L"file"}));
  EXPECT_EQ(Listed(folder.File(L"*"), 0, 2), (Names{L"file"}));
  EXPECT_EQ(Listed(folder.File(L"*"), 0, 1), (Names{L".", L"..", L"file", L"sub"}));
}

TEST(DirSort, ASecondListingJoinsTheFirstUnlessCleared) {
  const TemporaryFolder folder;
  WriteBytes(folder.File(L"m"), "");
  CDirSort list;
  AddNames({L"z", L"a"}, &list);
  list.Init(folder.File(L"*"), 1, 0, 0, 0);
  EXPECT_EQ(NamesOf(list), (Names{L"a", L"m", L"z"}));
  list.End();
  list.Init(folder.File(L"*"), 1, 1, 0, 0);
  EXPECT_EQ(NamesOf(list), (Names{L"m"}));
}

TEST(DirSort, WithoutAMatchTheListStaysUnsorted) {
  const TemporaryFolder folder;
  CDirSort list;
  AddNames({L"z", L"a"}, &list);
  list.End();
  EXPECT_EQ(list.Init(folder.File(L"none*"), 1, 0, 0, 0), 0);
  EXPECT_STREQ(list.Get_aktel()->namn, L"z");
  EXPECT_EQ(list.Init(folder.File(L"no such folder\\*"), 1, 0, 0, 0), 0);
  EXPECT_EQ(list.Init(static_cast<const wchar_t*>(nullptr), 1, 0, 0, 0), 0);
  EXPECT_EQ(NamesOf(list), (Names{L"z", L"a"}));
  // What the ending leaves out has matched all the same.
  ASSERT_TRUE(MakeFolder(folder.File(L"map.d")));
  WriteBytes(folder.File(L"map.d\\file"), "");
  EXPECT_EQ(list.Init(folder.File(L"map.d\\file"), 1, 0, 0, 0), 0);
  EXPECT_EQ(NamesOf(list), (Names{L"a", L"z"}));
  EXPECT_EQ(list.Init(folder.File(L"none*"), 1, 1, 0, 0), 0);
  EXPECT_EQ(list.Where(), -1);
}

TEST(DirSort, TheValueHoldsWhileInitRuns) {
  struct Watching : CDirSort {
    int Sortval(int key) override {
      seen = m_nVal;
      return CDirSort::Sortval(key);
    }
    int seen = 0;
  };
  const TemporaryFolder folder;
  for (const wchar_t* name : {L"a", L"b"}) WriteBytes(folder.File(name), "");
  Watching list;
  EXPECT_EQ(list.m_nVal, 0);
  list.m_nVal = 3;
  list.Init(folder.File(L"*"), 1, 1, 17, 0);
  EXPECT_EQ(list.seen, 17);
  EXPECT_EQ(list.m_nVal, 3);
}

TEST(DirSort, WhatTheSortThrowsPassesThrough) {
  struct Failing : CDirSort {
    int Sortval(int) override { throw L"Minnebrist"; }
  };
  const TemporaryFolder folder;
  for (const wchar_t* name : {L"a", L"b"}) WriteBytes(folder.File(name), "");
  Failing list;
  EXPECT_THROW(list.Init(folder.File(L"*"), 1, 1, 0, 0), const wchar_t*);
}

// A file changed now, by the system's clock and zone.
TEST(DirSort, ANewFileHasTodaysDate) {
  const TemporaryFolder folder;
  const auto today = [] {
    const std::time_t now = std::time(nullptr);
    wchar_t text[11];
    std::wcsftime(text, 11, L"%Y-%m-%d", std::localtime(&now));
    return std::wstring(text);
  };
  const std::wstring before = today();
  WriteBytes(folder.File(L"a"), "");
  CDirSort list;
  list.Init(folder.File(L"*"), 1, 1, 0, 0);
  ASSERT_EQ(list.Home(), 0);
  EXPECT_TRUE(list.pael->datum == before || list.pael->datum == today()) << ToUtf8(list.pael->datum);
  EXPECT_EQ(std::wcslen(list.pael->tid), 5U);
}

}  // namespace
}  // namespace velmora
