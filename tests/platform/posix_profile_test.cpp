// Profiles where the system has none of its own.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>
#include <string>
#include <vector>

#include "tests/platform/posix_main.h"
#include "tests/support/environment_variable.h"
#include "tests/support/print_text.h"
#include "tests/support/test_files.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"

namespace velmora {
namespace {

TEST(PosixProfile, LettersBeyondAsciiHaveCaseToo) {
  const TemporaryFolder folder;
  const CString path = folder.File(L"a.ini");
  WriteBytes(path, "[S\xC5]\r\n\xE4=\xF6\r\n");
  EXPECT_EQ(ReadProfile(L"s\u00E5", L"\u00C4", path), L"\u00F6");
}

TEST(PosixProfile, BareNamesAreOfTheUsersData) {
  const TemporaryFolder folder;
  const EnvironmentVariable data(L"XDG_DATA_HOME", folder.File(L"new\\data"));
  EXPECT_TRUE(ReadProfile(L"S", L"k", L"Velmora.ini").IsEmpty());
  EXPECT_TRUE(NamesIn(folder.Path()).empty());
  EXPECT_TRUE(WriteProfile(L"S", L"k", L"v", L"Velmora.ini"));
  EXPECT_EQ(ReadBytes(folder.File(L"new\\data\\velmora\\Velmora.ini")), "[S]\r\nk=v\r\n");
  EXPECT_EQ(ReadProfile(L"S", L"k", L"Velmora.ini"), L"v");
}

TEST(PosixProfile, APipeIsNone) {
  const TemporaryFolder folder;
  const CString pipe = folder.File(L"pipe");
  ASSERT_EQ(mkfifo(PathForDisplay(pipe).c_str(), 0600), 0);
  EXPECT_TRUE(ReadProfile(L"S", L"k", pipe).IsEmpty());
  EXPECT_FALSE(WriteProfile(L"S", L"k", L"v", pipe));
}

TEST(PosixProfile, WritersLoseNothing) {
  const TemporaryFolder folder;
  const CString path = folder.File(L"a.ini");
  constexpr int kWriters = 50;
  std::vector<pid_t> writers;
  for (int i = 0; i < kWriters; ++i)
    writers.push_back(StartProfileWriter(std::to_string(i), PathForDisplay(path)));
  for (const pid_t writer : writers) {
    int status = -1;
    ASSERT_EQ(waitpid(writer, &status, 0), writer);
    EXPECT_EQ(status, 0);
  }
  for (int i = 0; i < kWriters; ++i) {
    CString name;
    CString key;
    name.Format(L"%d", i);
    for (int n = 0; n < 3; ++n) {
      key.Format(L"%d-%d", i, n);
      EXPECT_EQ(ReadProfile(L"Writers", key, path), name);
    }
  }
  EXPECT_EQ(NamesIn(folder.Path()).size(), 1U);
}

}  // namespace
}  // namespace velmora
