// Profiles where the system has none of its own.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/platform/posix_processes.h"
#include "tests/support/environment_variable.h"
#include "tests/support/print_text.h"
#include "tests/support/test_files.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"

namespace velmora {
namespace {

TEST(PosixProfile, BareNamesAreOfTheUsersData) {
  const TemporaryFolder folder;
  const EnvironmentVariable data(L"XDG_DATA_HOME", folder.File(L"new\\data"));
  EXPECT_TRUE(ReadProfile(L"S", L"k", L"Velmora.ini").IsEmpty());
  EXPECT_TRUE(NamesIn(folder.Path()).empty());
  EXPECT_TRUE(WriteProfile(L"S", L"k", L"v", L"Velmora.ini"));
  EXPECT_EQ(NamesIn(folder.File(L"new\\data\\velmora")), std::vector<CString>{L"Velmora.ini"});
  EXPECT_EQ(ReadProfile(L"S", L"k", L"Velmora.ini"), L"v");
}

TEST(PosixProfile, WritersLoseNothing) {
  const TemporaryFolder folder;
  const CString path = folder.File(L"a.ini");
  constexpr const wchar_t* kKeys[] = {L"-0", L"-1", L"-2"};
  constexpr int kWriters = 20;
  RunTogether(kWriters, [&](const CString& name) {
    return std::all_of(std::begin(kKeys), std::end(kKeys),
                       [&](const CString& key) { return WriteProfile(L"Writers", name + key, name, path); });
  });
  for (int i = 0; i < kWriters; ++i) {
    const CString name = FromUtf8(std::to_string(i));
    for (const wchar_t* key : kKeys) EXPECT_EQ(ReadProfile(L"Writers", name + key, path), name);
  }
  EXPECT_EQ(NamesIn(folder.Path()).size(), 1U);
}

}  // namespace
}  // namespace velmora
