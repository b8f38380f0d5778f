// Links in a project, which systems of another kind make seldom.
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/print_text.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/test_files.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/project/proj_path.h"

namespace velmora {
namespace {

TEST(ProjectLinks, ListedFoldersAreMadeBehindLinks) {
  const TemporaryFolder folder;
  const RecordedMessages messages;
  for (const wchar_t* made : {L"P", L"P\\in", L"out"}) MakeFolder(folder.File(made));
  const auto link = [&](const wchar_t* to, const wchar_t* at) {
    ASSERT_EQ(symlink(PathForDisplay(to).c_str(), PathForDisplay(folder.File(at)).c_str()), 0);
  };
  link(L"..\\out", L"P\\away");
  link(L"in", L"P\\near");
  link(L"nowhere", L"P\\dead");
  WriteBytes(folder.File(L"list"), "away\nAWAY\\x\nnear\\y\n\\\\away\\z\ndead\\x\nnot reached\n");
  CTundrilIni ini;
  ini.m_useIniFile = 1;
  ini.m_iniPath = folder.File(L"ini");
  ini.WriteKey(L"ARKIV", L"MAPPAR", folder.File(L"list"));
  EXPECT_EQ(CProjPath().CreateProjectStructure(folder.File(L"P"), &ini, 0, 1, 0, 0, 0, 0, 1), 0);
  EXPECT_EQ(NamesIn(folder.File(L"out")), (std::vector<CString>{L"x", L"z"}));
  EXPECT_EQ(NamesIn(folder.File(L"P\\in")), std::vector<CString>{L"y"});
  ASSERT_EQ(messages.boxes.size(), 1U);
  EXPECT_EQ(messages.boxes[0].text, L"Fel, kan EJ skapa katalog:\n" + folder.File(L"P\\dead"));
}

}  // namespace
}  // namespace velmora
