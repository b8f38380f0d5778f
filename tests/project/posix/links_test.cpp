// Links in a project, which systems of another kind make seldom.
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/print_text.h"
#include "tests/support/test_files.h"
#include "velmora/common/folder_levels.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

TEST(ProjectLinks, WhatLeadsOutOfTheFolderIsNotMade) {
  const TemporaryFolder folder;
  for (const wchar_t* made : {L"P", L"P\\in", L"out"}) MakeFolder(folder.File(made));
  const auto link = [&](const wchar_t* to, const wchar_t* at) {
    ASSERT_EQ(symlink(PathForDisplay(to).c_str(), PathForDisplay(folder.File(at)).c_str()), 0);
  };
  link(L"..\\out", L"P\\away");
  link(L"in", L"P\\near");
  link(L"nowhere", L"P\\dead");
  link(L"P", L"Q");
  link(L"..\\PP", L"P\\alike");
  MakeFolder(folder.File(L"PP"));
  const struct {
    const wchar_t* listed;
    bool may;
  } kCases[] = {{L"new\\x", true},   {L"in\\x", true},   {L"near\\x\\y", true}, {L"away", false},
                {L"AWAY\\x", false}, {L"away/x", false}, {L"alike\\x", false},  {L"\\away\\x\\y", false},
                {L"dead\\x", true},  // cannot be made, which is told as for any other folder
                {L"", true}};
  for (const wchar_t* project : {L"P", L"Q"})
    for (const auto& c : kCases)
      EXPECT_EQ(MayBeMadeIn(folder.File(project), c.listed), c.may) << ToUtf8(c.listed);
  EXPECT_TRUE(MayBeMadeIn(folder.File(L"not there yet"), L"x"));
  EXPECT_EQ(MakeFolderLevels(folder.File(L"P\\dead\\x")), folder.File(L"P\\dead"));
}

}  // namespace
}  // namespace velmora
