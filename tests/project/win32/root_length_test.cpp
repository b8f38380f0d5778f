// The library's own rule for the root of a path beside the system's.
#include <gtest/gtest.h>
#include <shlwapi.h>

#include <cwchar>

#include "velmora/project/folder_levels.h"

namespace velmora {
namespace {

size_t SystemsRootLength(const wchar_t* path) {
  wchar_t copy[MAX_PATH] = {};
  std::wcsncpy(copy, path, MAX_PATH - 1);
  return PathStripToRootW(copy) ? std::wcslen(copy) : 3;
}

TEST(RootLength, IsWhatTheSystemLeaves) {
  for (const wchar_t* path : {L"",
                              L"P",
                              L"P\\sub\\x",
                              L"C:",
                              L"C:\\",
                              L"C:\\P",
                              L"C:\\P\\sub",
                              L"C:\\\\P",
                              L"C:P",
                              L"C:P\\sub",
                              L"C:/P/sub",
                              L"1:\\P",
                              L"\\",
                              L"\\P",
                              L"\\P\\sub\\x",
                              L"\\\\",
                              L"\\\\srv",
                              L"\\\\srv\\",
                              L"\\\\srv\\P",
                              L"\\\\srv\\P\\",
                              L"\\\\srv\\P\\sub\\x",
                              L"\\\\srv\\\\P\\sub",
                              L"\\\\\\P\\sub",
                              L"/P/sub",
                              L"ab:\\P\\sub"})
    EXPECT_EQ(RootLength(path), SystemsRootLength(path)) << ToUtf8(path);
}

}  // namespace
}  // namespace velmora
