#include "velmora/project/dir_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/print_text.h"
#include "tests/support/test_files.h"
#include "velmora/project/dir_entry.h"

namespace velmora {
namespace {

using Names = std::vector<std::wstring>;

Names NamesOf(CDirSort& list) {
  Names names;
  for (bool more = list.Home() == 0; more; more = list++ != nullptr) names.emplace_back(list.pael->namn);
  return names;
}

void AddNames(const Names& names, CDirSort* list) {
  for (const std::wstring& name : names) {
    list->Ny(1);
    CopyToField(list->pael->namn, name);
  }
}

Names Listed(const CString& pattern, int key, int folders = 0) {
  CDirSort list;
  EXPECT_EQ(list.Init(pattern, key, 1, 0, folders), 0);
  return NamesOf(list);
}

TEST(DirEntry, ANumberIsReadFromTheStartOfAName) {
  EXPECT_EQ(NumberAtStart(L"20240115123000.TXT"), 20240115123000);
  EXPECT_EQ(NumberAtStart(L"-99999999999999999999"), -std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(NumberAtStart(L"\u0661"), kNoNumber);
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

TEST(DirEntry, AnEntryTellsDayTimeSizeAndShortName) {
  const struct {
    FileTime changed;
    std::uint64_t size;
    const wchar_t* short_name;
    const wchar_t* told;
  } kCases[] = {
      {{2024, 3, 9, 8, 5, 59}, 0, L"", L"2024-03-09 08.05 0 ABCDEFGHIJKL"},
      {{1970, 1, 1, 0, 0, 0}, 1, L"ABCDEF~1", L"1970-01-01 00.00 1000 ABCDEF~1"},
      {{1969, 12, 31, 23, 59, 59}, 999, L"", L"1970-01-01 23.59 1000 ABCDEFGHIJKL"},
      {{2037, 12, 31, 1, 2, 3}, 1001, L"", L"2037-12-31 01.02 1001 ABCDEFGHIJKL"},
      {{2038, 5, 6, 17, 4, 0}, 2147483648, L"", L"1970-01-01 17.04 -2147483648 ABCDEFGHIJKL"},
      {{}, 4294967796, L"", L"  1000 ABCDEFGHIJKL"},  // no time that a calendar has
  };
  for (const auto& c : kCases) {
    FoundFile file;
    file.name = L"ABCDEFGHIJKLM" + CString(L'x', 300);
    file.short_name = c.short_name;
    file.status.size = c.size;
    file.status.modified_local = c.changed;
    dirsorttype entry{};
    FillEntry(file, &entry);
    CString told;
    told.Format(L"%s %s %d %s", entry.datum, entry.tid, entry.filstorlek, entry.kortnamn);
    EXPECT_EQ(told, CString(c.told));
    EXPECT_EQ(std::wcslen(entry.namn), 259U);
  }
}

TEST(DirEntry, APatternRequiresItsEnding) {
  const std::pair<const wchar_t*, const wchar_t*> kCases[] = {
      {L"C:\\P\\*.DAT", L".DAT"}, {L"C:\\P.1\\A", L".1\\A"}, {L"A.B.C", L".C"}, {L"A.", L"."},
      {L"C:\\P\\*.DA?", L""},     {L"C:\\P.1\\*", L""},      {L"*.*", L""},     {L"", L""},
  };
  for (const auto& [pattern, ending] : kCases)
    EXPECT_EQ(CString(RequiredEnding(pattern)), ending) << ToUtf8(pattern);
}

// How the list puts two entries in order is list0's affair (core).
TEST(DirEntry, TheRankOfTwoEntriesForEveryKey) {
  const struct {
    const wchar_t* first;
    const wchar_t* second;
    bool ascending, descending;  // whether the first comes before the second
  } kTexts[] = {{L"9", L"10", true, false},
                {L"10", L"9", false, true},
                {L"a", L"B", true, true},
                {L"B", L"a", false, true},
                {L"a", L"A", false, true},
                {L"010", L"10", true, true},
                {L" -2", L"+1", true, false},
                {L"x", L"100000000", true, false},
                {L"zzz", L"å", true, true},
                {L"å", L"\u00C5", false, true},
                {L"2024-03-09", L"2024-01-01", false, true},
                {L"2024-03-09", L"2025-01-01", true, false}};
  for (const auto& c : kTexts) {
    dirsorttype first{}, second{};
    for (const auto& [text, entry] : {std::pair(c.first, &first), std::pair(c.second, &second)}) {
      CopyToField(entry->namn, text);
      CopyToField(entry->datum, text);
    }
    second.filstorlek = 1;
    for (const int key : {1, 3}) {
      EXPECT_EQ(CompareEntries(first, second, key) > 0, c.ascending) << ToUtf8(c.first) << " " << key;
      EXPECT_EQ(CompareEntries(first, second, -key) > 0, c.descending) << ToUtf8(c.first) << " " << -key;
    }
    for (const int key : {0, 4}) EXPECT_LE(CompareEntries(first, second, key), 0);
    for (const int key : {2, -2})
      EXPECT_TRUE(CompareEntries(first, second, key) > 0 && CompareEntries(second, first, key) <= 0 &&
                  CompareEntries(first, first, key) <= 0);
  }
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
  WriteBytes(folder.File(L"B"), std::string(1200, 'x'));
  for (const int key : {2, -2}) EXPECT_EQ(Listed(folder.File(L"*"), key), (Names{L"B", L"A"}));
}

TEST(DirSort, FilesAreListedByPatternAndFoldersOnDemandOnly) {
  const TemporaryFolder folder;
  for (const wchar_t* name : {L"10.dat", L"9.DAT", L"b.DATX", L"A.DAT.bak"})
    WriteBytes(folder.File(name), "");
  ASSERT_TRUE(MakeFolder(folder.File(L"sub")));
  EXPECT_EQ(Listed(folder.File(L"*.DAT"), 1), (Names{L"9.DAT", L"10.dat"}));
  EXPECT_EQ(Listed(folder.File(L"*.*"), 1, 2), (Names{L"9.DAT", L"10.dat", L"A.DAT.bak", L"b.DATX"}));
  EXPECT_EQ(Listed(folder.File(L"*"), 1, 1),
            (Names{L"9.DAT", L"10.dat", L".", L"..", L"A.DAT.bak", L"b.DATX", L"sub"}));
}

TEST(DirSort, AListingJoinsTheFormerAndSortsItOnlyWhenSomethingMatches) {
  const TemporaryFolder folder;
  ASSERT_TRUE(MakeFolder(folder.File(L"map.d")));
  WriteBytes(folder.File(L"map.d\\m"), "");
  CDirSort list;
  AddNames({L"z", L"a"}, &list);
  for (const CString& pattern : {folder.File(L"none*"), folder.File(L"no such folder\\*"), CString()})
    EXPECT_EQ(list.Init(pattern, 1, 0, 0, 0), 0);
  EXPECT_EQ(list.Init(static_cast<const wchar_t*>(nullptr), 1, 0, 0, 0), 0);
  EXPECT_EQ(NamesOf(list), (Names{L"z", L"a"}));
  list.Init(folder.File(L"map.d\\m"), 1, 0, 0, 0);
  EXPECT_EQ(NamesOf(list), (Names{L"a", L"z"})) << "what the ending leaves out has matched all the same";
  list.Init(folder.File(L"map.d\\*"), 1, 0, 0, 0);
  EXPECT_EQ(NamesOf(list), (Names{L"a", L"m", L"z"}));
  list.End();
  list.Init(folder.File(L"none*"), 1, 1, 0, 0);
  EXPECT_EQ(list.Where(), -1);
}

TEST(DirSort, TheValueHoldsWhileInitRunsAndWhatTheSortThrowsPassesThrough) {
  struct Watching : CDirSort {
    int Sortval(int key) override {
      seen = m_nVal;
      if (key == 3) throw L"Minnebrist";
      return CDirSort::Sortval(key);
    }
    int seen = 0;
  };
  const TemporaryFolder folder;
  for (const wchar_t* name : {L"a", L"b"}) WriteBytes(folder.File(name), "");
  Watching list;
  list.m_nVal = 3;
  list.Init(folder.File(L"*"), 1, 1, 17, 0);
  EXPECT_EQ(list.seen, 17);
  EXPECT_EQ(list.m_nVal, 3);
  EXPECT_THROW(list.Init(folder.File(L"*"), 3, 1, 0, 0), const wchar_t*);
}

}  // namespace
}  // namespace velmora
