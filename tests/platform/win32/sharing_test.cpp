// What a program meets whose file another one keeps open without sharing it.
#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <string>
#include <thread>

#include "tests/support/test_files.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"

namespace velmora {
namespace {

class Sharing : public ::testing::Test {
 protected:
  Sharing() { WriteBytes(path_, "[S]\r\nk=old\r\n"); }

  HANDLE Keep() { return CreateFileW(path_, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr); }

  TemporaryFolder folder_;
  CString path_ = folder_.File(L"A.INI");
};

TEST_F(Sharing, IsWaitedForAndGivenUpInTime) {
  const struct {
    const char* what;
    bool (*operation)(const CString& path);
    const char* after;
  } kOperations[] = {
      {"replace", [](const CString& path) { return ReplaceFileContent(path, "new"); }, "new"},
      {"profile", [](const CString& path) { return WriteProfile(L"S", L"k", L"new", path); },
       "[S]\r\nk=new\r\n"},
      {"remove", [](const CString& path) { return RemoveWholeFile(path); }, ""},
  };
  for (const auto& [what, operation, after] : kOperations) {
    WriteBytes(path_, "[S]\r\nk=old\r\n");
    const HANDLE kept = Keep();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(operation(path_)) << what;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(8)) << what;
    CloseHandle(kept);
    EXPECT_EQ(ReadBytes(path_), "[S]\r\nk=old\r\n") << what;
    EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{L"A.INI"}) << what;

    std::thread keeper([kept_again = Keep()] {
      std::this_thread::sleep_for(std::chrono::milliseconds(300));
      CloseHandle(kept_again);
    });
    EXPECT_TRUE(operation(path_)) << what;
    keeper.join();
    EXPECT_EQ(ReadBytes(path_), after) << what;
  }
}

}  // namespace
}  // namespace velmora
