#include "velmora/common/paths.h"

#include <gtest/gtest.h>

#include "tests/support/print_text.h"
#include "velmora/common/text_hooks.h"

namespace velmora {
namespace {

struct SplitCase {
  const wchar_t* path;
  const wchar_t* folder;
  const wchar_t* name;
};
TEST(Paths, SplitAtTheLastBackslash) {
  const SplitCase kCases[] = {
      {L"C:\\P\\ROAD.VL", L"C:\\P", L"ROAD.VL"},
      {L" \t\"C:\\P Q\\ROAD.VL\" ", L"C:\\P Q", L"ROAD.VL"},
      {L"\"\"C:\\P\\\"\"", L"C:\\P", L""},  // every surrounding quote
      {L"ROAD.VL", L"", L"ROAD.VL"},
      {L"\\ROAD.VL", L"", L"ROAD.VL"},
      {L"C:/P/ROAD.VL", L"", L"C:/P/ROAD.VL"},
      {L"C:\\\\ROAD.VL", L"C:\\", L"ROAD.VL"},
      {L"", L"", L""},
      {L" \" ", L"", L""},
  };
  for (const SplitCase& c : kCases) {
    CString folder = L"f", name = L"n";
    SplitPath(c.path, &folder, &name);
    EXPECT_EQ(folder, c.folder) << ToUtf8(c.path);
    EXPECT_EQ(name, c.name) << ToUtf8(c.path);
    SplitPath(c.path, nullptr, nullptr);
  }
  CString path = L"A\\B";
  SplitPath(path, &path, nullptr);
  EXPECT_EQ(path, L"A");
}

TEST(Paths, OnlyModeOneMakesSlashes) {
  EXPECT_EQ(ConvertSlashes(L"a\\b/c\\", 1), L"a/b/c/");
  for (const int mode : {0, 2, -1}) EXPECT_EQ(ConvertSlashes(L"a\\b/c/", mode), L"a\\b\\c\\");
}

TEST(Paths, JoiningTidiesNothing) {
  EXPECT_EQ(JoinPath(L"C:\\P", L"ROAD.VL"), L"C:\\P\\ROAD.VL");
  EXPECT_EQ(JoinPath(L"C:\\", L"\\x"), L"C:\\\\\\x");
  EXPECT_EQ(JoinPath(L"", L"x"), L"\\x");
  EXPECT_EQ(JoinPath(L"100%s", L"%d"), L"100%s\\%d");
}

TEST(Paths, SwedishLettersKeepTheirCaseInSortKeys) { EXPECT_EQ(SortUpper(L"azåäöÅé09_Zß"), L"AZåäöÅé09_Zß"); }

TEST(TextHooks, LinesPassUnchanged) {
  const CString line = L" å\t{|}~ 1,5 ";
  EXPECT_EQ(ConvertReadLine(line), line);
  EXPECT_EQ(ConvertWrittenLine(line), line);
}

}  // namespace
}  // namespace velmora
