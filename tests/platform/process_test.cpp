#include "velmora/platform/process.h"

#include <gtest/gtest.h>

#include "tests/support/environment_variable.h"
#include "tests/support/test_files.h"
#include "velmora/platform/files.h"
#include "velmora/platform/shell_folders.h"

namespace velmora {
namespace {

TEST(Process, CommandLineStartsWithTheProgram) {
  CString program = CommandLine();
  EXPECT_GE(program.Find(L"platform_test"), 0);
  // The folder of this program, from the line as callers take it apart.
  if (program.GetAt(0) == L'"') {
    program = program.Mid(1);
    program = program.Left(program.Find(L'"'));
  } else if (program.Find(L' ') >= 0) {
    program = program.Left(program.Find(L' '));
  }
  ASSERT_GT(program.ReverseFind(L'\\'), 0);
  EXPECT_TRUE(FileOrFolderExists(program.Left(program.ReverseFind(L'\\'))));
}

TEST(Process, CommandLineKeepsWhatWasWrittenBack) {
  const CString before = CommandLine();
  for (const CString& text : {CString(L"C:\\Suite"), CString(L"a"), CString(), CString(L'x', 5000), before}) {
    SetCommandLine(text);
    EXPECT_EQ(CommandLine(), text);
  }
}

TEST(Process, NoApplicationUntilItHasAProfile) {
  EXPECT_TRUE(ApplicationProfile().IsEmpty());
  SetApplicationProfile(L"C:\\Suite\\Velmora.ini");
  EXPECT_EQ(ApplicationProfile(), L"C:\\Suite\\Velmora.ini");
  SetApplicationProfile(CString());
}

TEST(ShellFolders, ReadsTheEnvironment) {
  CString value = L"before";
  {
    const EnvironmentVariable unset(L"VELMORA_TEST_VALUE", std::nullopt);
    EXPECT_FALSE(ReadEnvironment(L"VELMORA_TEST_VALUE", &value));
    EXPECT_EQ(value, L"before");
  }
  for (const CString& text : {CString(L"C:\\a b\\\u00E5"), CString(L'x', 300), CString(L'y', 256)}) {
    const EnvironmentVariable set(L"VELMORA_TEST_VALUE", text);
    EXPECT_TRUE(ReadEnvironment(L"VELMORA_TEST_VALUE", &value));
    EXPECT_EQ(value, text);
  }
}

TEST(ShellFolders, ApplicationDataIsMade) {
  const TemporaryFolder folder;
  const EnvironmentVariable data(L"XDG_DATA_HOME", folder.File(L"a\\b"));
  const CString found = UserApplicationData();
  ASSERT_FALSE(found.IsEmpty());
  const auto status = GetFileStatus(found);
  ASSERT_TRUE(status);
  EXPECT_EQ(status->kind, FileKind::kFolder);
}

}  // namespace
}  // namespace velmora
