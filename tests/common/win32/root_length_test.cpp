// The library's own rule for the root of a path beside the system's.
#include <gtest/gtest.h>
#include <shlwapi.h>

#include <cwchar>
#include <string>

#include "velmora/common/folder_levels.h"

namespace velmora {
namespace {

size_t SystemsRootLength(std::wstring path) {
  path.resize(MAX_PATH);
  return PathStripToRootW(path.data()) ? std::wcslen(path.c_str()) : 3;
}

TEST(RootLength, IsWhatTheSystemLeaves) {
  for (const wchar_t* start : {L"", L"C:", L"C:\\", L"C:/", L"1:\\", L"ab:\\", L"\\", L"\\\\", L"\\\\srv\\"})
    for (const wchar_t* rest : {L"", L"P", L"P\\", L"\\P", L"P\\sub\\x"}) {
      const CString path = CString(start) + rest;
      EXPECT_EQ(RootLength(path.GetView()), SystemsRootLength(path.GetString())) << ToUtf8(path);
    }
}

}  // namespace
}  // namespace velmora
