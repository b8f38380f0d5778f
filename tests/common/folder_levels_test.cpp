#include "velmora/common/folder_levels.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/support/print_text.h"
#include "tests/support/test_files.h"

namespace velmora {
namespace {

TEST(FolderLevels, TheRootIsADriveAShareOrABackslash) {
  const std::pair<const wchar_t*, size_t> kCases[] = {
      {L"C:\\P\\sub", 3}, {L"\\home\\x\\P", 1}, {L"\\\\srv\\P\\sub", 7}, {L"\\\\srv", 5}, {L"\\\\srv\\", 6},
      {L"\\\\\\P\\s", 4}, {L"C:P\\sub", 3},     {L"C:/P/sub", 3},        {L"", 3},        {L"/home/x", 3},
  };
  for (const auto& [path, length] : kCases) EXPECT_EQ(RootLength(path), length) << ToUtf8(path);
}

TEST(FolderLevels, EveryMissingLevelIsMade) {
  const TemporaryFolder folder;
  for (const wchar_t* path : {L"a\\b\\c", L"a\\b\\d\\", L"e\\\\f", L"e\\.\\\\.\\g\\."}) {
    EXPECT_EQ(MakeFolderLevels(folder.File(path)), std::nullopt);
    EXPECT_EQ(MakeFolderLevels(folder.File(path)), std::nullopt) << "they are there already";
  }
  EXPECT_EQ(NamesIn(folder.File(L"a\\b")), (std::vector<CString>{L"c", L"d"}));
  EXPECT_EQ(NamesIn(folder.File(L"e")), (std::vector<CString>{L"f", L"g"}));
  // When each of these is looked up as a level, the walk lasts for minutes.
  CString path = folder.File(L"i");
  for (int i = 0; i < 8000; ++i) path += L"\\.\\";
  MakeFolderLevels(path);
  EXPECT_EQ(NamesIn(folder.Path()), (std::vector<CString>{L"a", L"e", L"i"}));
}

TEST(FolderLevels, TheLevelThatCannotBeMadeIsTold) {
  const TemporaryFolder folder;
  WriteBytes(folder.File(L"file"), "x");
  EXPECT_EQ(MakeFolderLevels(folder.File(L"a\\..\\file\\b\\c")), folder.File(L"a\\..\\file\\b"));
  EXPECT_EQ(NamesIn(folder.Path()), (std::vector<CString>{L"a", L"file"}));
  EXPECT_EQ(MakeFolderLevels(L""), CString());
}

TEST(FolderLevels, OnlyPlacesInsideTheFolderStayThere) {
  for (const wchar_t* name : {L"Foto\\2024\\", L"Foto/2024", L"Väg..gammal", L".dold", L"a\\.\\b", L" Foto",
                              L"CONSOLE", L"COM", L"COM10", L"NULL\\x", L"LPTx", L"x.CON"})
    EXPECT_TRUE(StaysInsideFolder(name)) << ToUtf8(name);
  for (const wchar_t* name : {L"", L"\\Foto", L"/Foto", L"..", L"Foto\\..\\..\\x", L"Foto/../x", L"Foto\\.. ",
                              L".. .\\x", L"...", L"C:Foto", L"Foto\\x:y", L"nul", L"Foto\\Prn.txt",
                              L"aux .x", L"COM1", L"lpt9\\x", L"COM\u00B2", L"conin$", L"CLOCK$"})
    EXPECT_FALSE(StaysInsideFolder(name)) << ToUtf8(name);
  EXPECT_FALSE(StaysInsideFolder(std::wstring_view(L"a\0b", 3)));
  EXPECT_TRUE(StaysInsideFolder(std::wstring(259, L'x')));
  EXPECT_FALSE(StaysInsideFolder(std::wstring(260, L'x')));
}

}  // namespace
}  // namespace velmora
