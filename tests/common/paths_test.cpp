#include "velmora/common/paths.h"

#include <gtest/gtest.h>

#include "tests/support/print_text.h"

namespace velmora {
namespace {

TEST(Paths, SplitAtTheLastBackslash) {
  const wchar_t* const kCases[][3] = {
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
  for (const auto& [path, folder, name] : kCases) {
    CString found_folder = L"f", found_name = L"n";
    SplitPath(path, &found_folder, &found_name);
    EXPECT_EQ(found_folder, folder) << ToUtf8(path);
    EXPECT_EQ(found_name, name) << ToUtf8(path);
    SplitPath(path, nullptr, nullptr);
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

}  // namespace
}  // namespace velmora
