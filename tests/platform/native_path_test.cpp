#include "velmora/platform/posix/native_path.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/environment_variable.h"
#include "tests/support/test_files.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

TEST(NativePath, DrivesAndSeparators) {
  const EnvironmentVariable home(L"HOME", L"\\nowhere\\home");
  const EnvironmentVariable data(L"XDG_DATA_HOME", std::nullopt);
  const EnvironmentVariable drive_c(L"VELMORA_DRIVE_C", L"\\nowhere\\c");
  const EnvironmentVariable drive_d(L"VELMORA_DRIVE_D", std::nullopt);
  const struct {
    CString path;
    const char* native;
  } cases[] = {{L"a\\b\\c", "a/b/c"},
               {L"\\nowhere\\a/b", "/nowhere/a/b"},
               {L"c:/a\\b", "/nowhere/c/a/b"},
               {L"C:", "/nowhere/c"},
               {L"C:\\..\\.\\..\\a\\.\\", "/nowhere/c/a/"},
               {L"C:/a/b/../../../c\\..", "/nowhere/c"},
               {L"C:\\a\\\\b\\..\\\\c\\\\", "/nowhere/c/a/c/"},
               {L"\\\\?\\c:\\a\\..\\b", "/nowhere/c/b"},
               {L"\\\\?\\a", "//?/a"},
               {L"C:a", "C:a"},
               {L"CC:\\a", "CC:/a"},
               {L"1:\\a", "1:/a"},
               {L"", ""},
               {L"\u00E5\U0001F600", "\u00E5\U0001F600"},
               {L"\xDC80\xDCFF", "\x80\xFF"},
               {L"\xD83D", ""},
               {CString(L"a\0b", 3), ""}};
  for (const auto& each : cases) EXPECT_EQ(NativePath(each.path), each.native) << ToUtf8(each.path);
  EXPECT_EQ(NativePath(L"D:\\a"), "/nowhere/home/.local/share/velmora/drive_d/a");
  const EnvironmentVariable data_home(L"XDG_DATA_HOME", L"\\nowhere\\data");
  EXPECT_EQ(NativePath(L"D:\\a"), "/nowhere/data/velmora/drive_d/a");
  const EnvironmentVariable relative(L"XDG_DATA_HOME", L"data");
  EXPECT_EQ(NativePath(L"Z:"), "/nowhere/home/.local/share/velmora/drive_z");
}

TEST(NativePath, DriveFolderIsMadeWithTheFirstEntry) {
  const TemporaryFolder folder;
  const EnvironmentVariable data(L"XDG_DATA_HOME", folder.File(L"data"));
  const EnvironmentVariable named(L"VELMORA_DRIVE_D", folder.File(L"missing"));
  EXPECT_TRUE(FindFiles(L"C:\\*").empty());
  EXPECT_FALSE(MakeFolder(L"D:\\a"));
  EXPECT_EQ(NamesIn(folder.Path()), std::vector<CString>());
  EXPECT_TRUE(MakeFolder(L"C:\\a"));
  EXPECT_TRUE(ReplaceFileContent(L"e:\\new.txt", "x"));
  EXPECT_EQ(NamesIn(folder.File(L"data\\velmora")), (std::vector<CString>{L"drive_c", L"drive_e"}));
}

TEST(NativePath, ANameFollowsTheLastSeparatorOfEitherKind) {
  EXPECT_EQ(NameOfPath(L"/home\\p/ROAD.VL"), L"ROAD.VL");
  EXPECT_EQ(NameOfPath(L"/home/p\\"), L"");
}

TEST(NativePath, NamesMatchWithoutRegardToCase) {
  const TemporaryFolder folder;
  const std::string root = PathForDisplay(folder.Path());
  for (const char* name : {"/Projekt", "/Projekt/V\xC3\x84G", "/projekt2", "/PROJEKT2", "/Projekt2"})
    ASSERT_TRUE(std::filesystem::create_directory(root + name));
  WriteBytes(folder.File(L"Projekt\\V\u00C4G\\Road.VL"), "x");
  const struct {
    const wchar_t* path;
    const char* native;
  } cases[] = {
      {L"PROJEKT\\v\u00E4g\\ROAD.vl", "/Projekt/V\xC3\x84G/Road.VL"},
      {L"projekt\\v\u00E4g\\", "/Projekt/V\xC3\x84G/"},
      {L"projekt\\v\u00E4g\\New.VL", "/Projekt/V\xC3\x84G/New.VL"},  // made in the existing folder
      {L"projekt\\new\\v\u00E4g", "/Projekt/new/v\xC3\xA4g"},        // from "new" on all is new
      {L"projekt2", "/projekt2"},                                    // as spelled wins
      {L"projekT2", "/PROJEKT2"},                                    // else the first
      {L"projekt\\..\\projekT\\.\\v\u00E4g", "/Projekt/../Projekt/./V\xC3\x84G"},
  };
  for (const auto& each : cases)
    EXPECT_EQ(NativePath(folder.File(each.path)), root + each.native) << ToUtf8(each.path);
  EXPECT_FALSE(MakeFolder(folder.File(L"projekt")));
  EXPECT_TRUE(ReplaceFileContent(folder.File(L"projekt\\v\u00E4g\\road.vl"), "y"));
  EXPECT_EQ(ReadBytes(folder.File(L"Projekt\\V\u00C4G\\Road.VL")), "y");
}

}  // namespace
}  // namespace velmora
