// Files that only a system of this kind can have, where the suite's other programs would take them for a
// device or a part of another file.
#include <gtest/gtest.h>

#include "tests/environment/installed.h"
#include "velmora/environment/tundril_ini.h"

namespace velmora {
namespace {

constexpr wchar_t kShared[] = L"all\\Quorval\\Zennik\\Velmora\\sv";

class ListedNames : public Installed {
 protected:
  ListedNames() { RegisterDataFolders(); }
  void MakeFiles(const CString& folder) const {
    for (const wchar_t* name : {L"CON", L"nul.DAT", L"COM1.DAT", L"aux .DAT", L"a:b.DAT", L"good.DAT"})
      MakeFile(folder + L"\\" + name, "listed");
  }
};

TEST_F(ListedNames, AreNotCopiedByTheUserDataCheck) {
  MakeFiles(kShared);
  MakeFiles(L"older");
  CTundrilIni ini;
  ini.m_useIniFile = 1;
  ini.m_iniPath = MakeIni(kUser);
  ini.AllUserFileCheck();
  EXPECT_EQ(NamesIn(At(kUser)), (std::vector<CString>{L"Velmora.ini", L"good.DAT"}));
  CString older = At(L"older");
  EXPECT_EQ(ini.User2Cfg(older), 0);  // the good one is there
  EXPECT_EQ(NamesIn(At(kUser)).size(), 2U);
  EXPECT_TRUE(messages_.boxes.empty());
}

TEST_F(ListedNames, AreToldByTheSetUp) {
  Register(HKEY_LOCAL_MACHINE, kDist, L"InstallPath", At(L"prog"));
  MakeIni(kFormerUser);
  MakeFiles(kFormerUser);
  CTundrilIni ini;
  EXPECT_EQ(ini.InitXPWay(20, L"sv", nullptr), 0);
  EXPECT_EQ(NamesIn(At(kUser)), (std::vector<CString>{L"Velmora.ini", L"good.DAT"}));
  ASSERT_EQ(messages_.boxes.size(), 5U);
  for (const MessageBoxCall& box : messages_.boxes)
    EXPECT_EQ(box.text.Left(26), L"Kunde inte kopiera filen:\n");
}

}  // namespace
}  // namespace velmora
