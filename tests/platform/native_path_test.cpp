#include "velmora/platform/posix/native_path.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "tests/support/test_files.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

// An environment variable for the length of a test.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    value == nullptr ? unsetenv(name) : setenv(name, value, 1);
  }
  ~Variable() { old_ ? setenv(name_, old_->c_str(), 1) : unsetenv(name_); }

 private:
  const char* name_;
  std::optional<std::string> old_;
};

TEST(NativePath, DrivesAndSeparators) {
  const Variable home("HOME", "/nowhere/home");
  const Variable data("XDG_DATA_HOME", nullptr);
  const Variable drive_c("VELMORA_DRIVE_C", "/nowhere/c");
  const Variable drive_d("VELMORA_DRIVE_D", nullptr);
  const struct {
    const wchar_t* path;
    const char* native;
  } cases[] = {
      {L"a\\b\\c", "a/b/c"},
      {L"\\nowhere\\a/b", "/nowhere/a/b"},
      {L"C:\\a\\b", "/nowhere/c/a/b"},
      {L"c:/a", "/nowhere/c/a"},
      {L"C:", "/nowhere/c"},
      {L"C:\\", "/nowhere/c/"},
      {L"D:\\a", "/nowhere/home/.local/share/velmora/drive_d/a"},
      {L"C:a", "C:a"},
      {L"CC:\\a", "CC:/a"},
      {L"1:\\a", "1:/a"},
      {L"", ""},
      {L"\u00E5\U0001F600", "\xC3\xA5\xF0\x9F\x98\x80"},
      {L"\xDC80\xDCFF", "\x80\xFF"},
      {L"\xD83D", ""},
  };
  for (const auto& each : cases) EXPECT_EQ(NativePath(each.path), each.native) << ToUtf8(each.path);
  EXPECT_EQ(NativePath(CString(L"a\0b", 3)), "");
  const Variable data_home("XDG_DATA_HOME", "/nowhere/data");
  EXPECT_EQ(NativePath(L"D:\\a"), "/nowhere/data/velmora/drive_d/a");
  const Variable relative("XDG_DATA_HOME", "data");
  EXPECT_EQ(NativePath(L"D:"), "/nowhere/home/.local/share/velmora/drive_d");
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
      {L"Projekt\\V\u00C4G\\Road.VL", "/Projekt/V\xC3\x84G/Road.VL"},
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
  EXPECT_TRUE(FileOrFolderExists(folder.File(L"PROJEKT\\v\u00E4g\\ROAD.vl")));
  EXPECT_FALSE(MakeFolder(folder.File(L"projekt")));
  EXPECT_TRUE(ReplaceFileContent(folder.File(L"projekt\\v\u00E4g\\road.vl"), "y"));
  EXPECT_EQ(ReadBytes(folder.File(L"Projekt\\V\u00C4G\\Road.VL")), "y");
}

TEST(NativePath, NamesThatAreNoTextFindTheirFiles) {
  const TemporaryFolder folder;
  const CString odd = PathFromSystem("\x80g\xE5t.txt");  // Windows-1252, not UTF-8
  ASSERT_TRUE(ReplaceFileContent(folder.File(odd), "odd"));
  EXPECT_EQ(PathForDisplay(odd), "\x80g\xE5t.txt");
  const std::string with_backslash = PathForDisplay(folder.Path()) + "/z\\z";
  fclose(fopen(with_backslash.c_str(), "w"));
  const auto found = FindFiles(folder.File(L"*t"));
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].name, odd);
  const auto strange = FindFiles(folder.File(L"z*"));
  ASSERT_EQ(strange.size(), 1U);
  EXPECT_TRUE(RemoveWholeFile(folder.File(strange[0].name)));
}

}  // namespace
}  // namespace velmora
