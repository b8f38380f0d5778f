#include "velmora/platform/files.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/test_files.h"

namespace velmora {
namespace {

TEST(Files, StatusTellsKindSizeAndProtection) {
  const TemporaryFolder folder;
  const CString path = folder.File(L"A.TXT");
  for (const CString& none : {path, CString(), folder.Path() + CString(L"\0x", 2)})
    EXPECT_FALSE(GetFileStatus(none));
  WriteBytes(path, "12345");
  const FileStatus status = GetFileStatus(path).value();
  EXPECT_TRUE(status.kind == FileKind::kFile && status.size == 5 && !status.write_protected);
  SetWriteProtected(path, true);
  EXPECT_TRUE(GetFileStatus(path)->write_protected);
  EXPECT_EQ(GetFileStatus(folder.Path() + L"\\").value().kind, FileKind::kFolder);
}

TEST(Files, CopyKeepsTheTime) {
  const TemporaryFolder folder;
  const CString from = folder.File(L"FROM");
  const CString to = folder.File(L"TO");
  WriteBytes(to, "older and longer");
  WriteBytes(from, std::string(150'000, 'f'));
  EXPECT_FALSE(CopyWholeFile(from, to, /*keep_existing=*/true));
  for (const CString& none : {folder.File(L"missing"), folder.Path()})
    EXPECT_FALSE(CopyWholeFile(none, to, false));
  SetWriteProtected(to, true);
  EXPECT_FALSE(CopyWholeFile(from, to, false));
  EXPECT_EQ(ReadBytes(to), "older and longer");
  EXPECT_TRUE(CopyWholeFile(from, folder.File(L"NEW"), /*keep_existing=*/true));
  EXPECT_EQ(ReadBytes(folder.File(L"NEW")), std::string(150'000, 'f'));
  EXPECT_EQ(GetFileStatus(folder.File(L"NEW"))->modified, GetFileStatus(from)->modified);
}

TEST(Files, Wildcards) {
  const struct {
    const wchar_t* pattern;
    const wchar_t* name;
    bool matches;
  } cases[] = {
      {L"*", L"a.b", true},      {L"*", L"", true},          {L"*.*", L"point", true}, {L"*.t", L"A.T", true},
      {L"*.t", L"a.t.t", true},  {L"*.t", L"a.tx", false},   {L"*.t", L"t", false},    {L"a??", L"a", true},
      {L"a??", L"ab", true},     {L"a??", L"abcd", false},   {L"a?.t", L"a.t", true},  {L"a?b", L"ab", false},
      {L"?", L".", false},       {L"a.*", L"a", true},       {L"a.?", L"a", true},     {L"a.*", L"ab", false},
      {L"*.", L"abc", true},     {L"*.", L"a.c", false},     {L"a.", L"a", true},      {L"..", L"..", true},
      {L"*a*b*", L"xayb", true}, {L"*a*b*", L"xaya", false}, {L"", L"", true},         {L"", L"a", false}};
  for (const auto& each : cases)
    EXPECT_EQ(MatchesWildcard(each.name, each.pattern), each.matches)
        << ToUtf8(each.pattern) << " on " << ToUtf8(each.name);
  // Every star doubles the ways to try; only their number may count.
  std::wstring stars;
  for (int i = 0; i < 100; ++i) stars += L"*a";
  EXPECT_FALSE(MatchesWildcard(std::wstring(250, L'a') + L"b", stars));
}

}  // namespace
}  // namespace velmora
