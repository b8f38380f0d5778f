#include "velmora/platform/files.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "tests/support/test_files.h"

namespace velmora {
namespace {

std::vector<CString> NamesOf(const std::vector<FoundFile>& found) {
  std::vector<CString> names;
  for (const FoundFile& each : found) names.push_back(each.name);
  return names;
}

TEST(Files, StatusTellsKindSizeAndProtection) {
  const TemporaryFolder folder;
  const CString path = folder.File(L"A.TXT");
  EXPECT_FALSE(GetFileStatus(path));
  EXPECT_FALSE(FileOrFolderExists(path));
  WriteBytes(path, "12345");
  auto status = GetFileStatus(path);
  ASSERT_TRUE(status);
  EXPECT_EQ(status->kind, FileKind::kFile);
  EXPECT_EQ(status->size, 5U);
  EXPECT_FALSE(status->write_protected);
  SetWriteProtected(path, true);
  EXPECT_TRUE(GetFileStatus(path)->write_protected);
  status = GetFileStatus(folder.Path() + L"\\");
  ASSERT_TRUE(status);
  EXPECT_EQ(status->kind, FileKind::kFolder);
  EXPECT_EQ(status->size, 0U);
  EXPECT_FALSE(GetFileStatus(L""));
  EXPECT_FALSE(GetFileStatus(folder.Path() + CString(L"\0x", 2)));
}

TEST(Files, ModifiedCountsTicksSince1601) {
  using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
  const TemporaryFolder folder;
  WriteBytes(folder.File(L"A"), "");
  const Ticks since_1970 =
      std::chrono::duration_cast<Ticks>(std::chrono::system_clock::now().time_since_epoch());
  const Ticks age =
      since_1970 + Ticks(116'444'736'000'000'000) - Ticks(GetFileStatus(folder.File(L"A"))->modified);
  EXPECT_LT(std::chrono::abs(age), std::chrono::minutes(2));
}

TEST(Files, FoldersOneLevelAtATime) {
  const TemporaryFolder folder;
  EXPECT_FALSE(MakeFolder(folder.File(L"a\\b")));
  EXPECT_TRUE(MakeFolder(folder.File(L"a")));
  EXPECT_FALSE(MakeFolder(folder.File(L"a")));
  EXPECT_TRUE(MakeFolder(folder.File(L"a\\\u00E5\u00E4\u00F6")));
  EXPECT_FALSE(RemoveEmptyFolder(folder.File(L"a")));
  EXPECT_FALSE(RemoveWholeFile(folder.File(L"a")));
  EXPECT_TRUE(RemoveEmptyFolder(folder.File(L"a\\\u00E5\u00E4\u00F6")));
  EXPECT_TRUE(RemoveEmptyFolder(folder.File(L"a")));
  EXPECT_FALSE(RemoveEmptyFolder(folder.File(L"a")));
}

TEST(Files, CopyKeepsTheTimeAndReplacesInOneStep) {
  const TemporaryFolder folder;
  const CString from = folder.File(L"FROM");
  const CString to = folder.File(L"TO");
  WriteBytes(to, "older and longer");
  WriteBytes(from, std::string(150'000, 'f'));
  EXPECT_FALSE(CopyWholeFile(from, to, /*keep_existing=*/true));
  EXPECT_EQ(ReadBytes(to), "older and longer");
  EXPECT_TRUE(CopyWholeFile(from, to, /*keep_existing=*/false));
  EXPECT_EQ(ReadBytes(to), std::string(150'000, 'f'));
  EXPECT_TRUE(CopyWholeFile(to, folder.File(L"NEW"), /*keep_existing=*/true));
  EXPECT_EQ(GetFileStatus(folder.File(L"NEW"))->modified, GetFileStatus(from)->modified);
  EXPECT_EQ(NamesIn(folder.Path()).size(), 3U);
}

TEST(Files, FailedCopyLeavesTheTarget) {
  const TemporaryFolder folder;
  const CString to = folder.File(L"TO");
  WriteBytes(to, "old");
  EXPECT_FALSE(CopyWholeFile(folder.File(L"missing"), to, false));
  EXPECT_FALSE(CopyWholeFile(folder.Path(), to, false));
  WriteBytes(folder.File(L"FROM"), "new");
  EXPECT_FALSE(CopyWholeFile(folder.File(L"FROM"), folder.File(L"missing\\TO"), false));
  SetWriteProtected(to, true);
  EXPECT_FALSE(CopyWholeFile(folder.File(L"FROM"), to, false));
  EXPECT_EQ(ReadBytes(to), "old");
}

TEST(Files, FindListsByNameAfterTheDots) {
  const TemporaryFolder folder;
  for (const wchar_t* name : {L"b.txt", L"A.TXT", L"c_.txt", L"C.doc", L"\u00C5.txt", L"z"})
    WriteBytes(folder.File(name), "12");
  ASSERT_TRUE(MakeFolder(folder.File(L"B")));
  const auto found = FindFiles(folder.File(L"*.*"));
  EXPECT_EQ(NamesOf(found), (std::vector<CString>{L".", L"..", L"A.TXT", L"B", L"b.txt", L"C.doc", L"c_.txt",
                                                  L"z", L"\u00C5.txt"}));
  ASSERT_EQ(found.size(), 9U);
  EXPECT_EQ(found[0].status.kind, FileKind::kFolder);
  EXPECT_EQ(found[2].status.size, 2U);
  EXPECT_EQ(found[2].status.modified, GetFileStatus(folder.File(L"A.TXT"))->modified);
  EXPECT_EQ(found[3].status.kind, FileKind::kFolder);
  EXPECT_EQ(NamesOf(FindFiles(folder.File(L"?.TXT"))),
            (std::vector<CString>{L"A.TXT", L"b.txt", L"\u00C5.txt"}));
  EXPECT_EQ(NamesOf(FindFiles(folder.File(L"a.txt"))), std::vector<CString>{L"A.TXT"});
  EXPECT_TRUE(FindFiles(folder.File(L"*.par")).empty());
  EXPECT_TRUE(FindFiles(folder.File(L"missing\\*")).empty());
  EXPECT_TRUE(FindFiles(folder.Path() + L"\\").empty());
  EXPECT_TRUE(FindFiles(L"").empty());
}

TEST(Files, Wildcards) {
  struct Case {
    const wchar_t* pattern;
    const wchar_t* name;
    bool matches;
  };
  const Case cases[] = {
      {L"*", L"a.b", true},
      {L"*", L"", true},
      {L"*.*", L"noPoint", true},
      {L"*.txt", L"A.TXT", true},
      {L"*.txt", L"a.txt.txt", true},
      {L"*.txt", L"a.txtx", false},
      {L"*.txt", L"txt", false},
      {L"\u00E5*", L"\u00C5b", true},
      {L"a.b", L"a.bc", false},
      {L"a?", L"a", true},  // nothing, at the end
      {L"a??", L"ab", true},
      {L"a?", L"abc", false},
      {L"a?.txt", L"a.txt", true},  // nothing, before the point
      {L"a?b", L"ab", false},
      {L"?", L".", false},
      {L"a.*", L"a", true},
      {L"a.?", L"a", true},
      {L"a.*", L"ab", false},
      {L"*.", L"abc", true},
      {L"*.", L"a.c", false},
      {L"a.", L"a", true},
      {L"..", L"..", true},
      {L"*a*b*c*", L"xaybzc", true},
      {L"*a*b*c*", L"xaycz", false},
      {L"", L"a", false},
      {L"", L"", true},
  };
  for (const Case& each : cases)
    EXPECT_EQ(MatchesWildcard(each.name, each.pattern), each.matches)
        << ToUtf8(each.pattern) << " on " << ToUtf8(each.name);
  // Every star doubles the ways to try; only their number may count.
  std::wstring stars;
  for (int i = 0; i < 100; ++i) stars += L"*a";
  EXPECT_FALSE(MatchesWildcard(std::wstring(250, L'a') + L"b", stars));
}

TEST(Files, ReadsToTheEnd) {
  const TemporaryFolder folder;
  WriteBytes(folder.File(L"A"), "12345");
  InputFile file;
  char buffer[3];
  EXPECT_EQ(file.Read(buffer), -1);
  ASSERT_TRUE(file.Open(folder.File(L"A")));
  EXPECT_EQ(file.Size(), 5U);
  std::string all;
  for (std::int64_t count = 0; (count = file.Read(buffer)) > 0;)
    all.append(buffer, static_cast<size_t>(count));
  EXPECT_EQ(all, "12345");
  EXPECT_EQ(file.Read(buffer), 0);
  EXPECT_FALSE(file.Open(folder.Path()));
  EXPECT_EQ(file.Read(buffer), -1);
}

TEST(Files, NamesComeAndGoAsTheUserWritesThem) {
  const CString path = PathFromSystem("a/b\\\xC3\xA5");
  EXPECT_EQ(path, L"a\\b\\\u00E5");
  EXPECT_EQ(PathFromSystem(PathForDisplay(path)), path);
}

}  // namespace
}  // namespace velmora
