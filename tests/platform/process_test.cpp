#include "velmora/platform/process.h"

#include <gtest/gtest.h>

#include "tests/support/environment_variable.h"
#include "velmora/platform/dialog.h"
#include "velmora/platform/shell_folders.h"
#include "velmora/platform/types.h"

namespace velmora {
namespace {

TEST(Process, CommandLineNamesTheProgramUntilItIsWritten) {
  const CString before = CommandLine();
  EXPECT_GE(before.Find(L"\\platform_test"), 0);
  for (const CString& text : {CString(L"C:\\Suite"), CString(), CString(L'x', 5000), before}) {
    SetCommandLine(text);
    EXPECT_EQ(CommandLine(), text);
  }
}

TEST(Dialog, TheDefaultButtonAnswers) {
  EXPECT_EQ(DefaultButton(MB_YESNO), IDYES);
  EXPECT_EQ(DefaultButton(MB_YESNO | MB_DEFBUTTON2), IDNO);
}

TEST(ShellFolders, ReadsTheEnvironment) {
  CString value = L"before";
  const EnvironmentVariable unset(L"VELMORA_TEST_VALUE", std::nullopt);
  EXPECT_FALSE(ReadEnvironment(L"VELMORA_TEST_VALUE", &value));
  EXPECT_EQ(value, L"before");
  for (const int length : {300, 256}) {
    const EnvironmentVariable set(L"VELMORA_TEST_VALUE", CString(L'\u00E5', length));
    EXPECT_TRUE(ReadEnvironment(L"VELMORA_TEST_VALUE", &value));
    EXPECT_EQ(value, CString(L'\u00E5', length));
  }
}

}  // namespace
}  // namespace velmora
