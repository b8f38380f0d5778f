// A user's data on this system: file names that Windows takes for a device or a stream, and no shell that
// registers the user's folder.
#include <gtest/gtest.h>

#include "tests/environment/installed.h"
#include "velmora/environment/tundril_ini.h"

namespace velmora {
namespace {

class ListedNames : public Installed {};

TEST_F(ListedNames, AreCopiedToTheFolderOfTheSetUp) {
  RegisterDataFolders();
  Register(HKEY_CURRENT_USER, kShellFolders, L"Appdata", L" saknas ");
  const CString user = L"xdg\\velmora\\appdata\\Quorval\\Zennik\\Velmora\\R20\\sv";
  const CString former = L"xdg\\velmora\\appdata\\Brovald\\Zennik\\Velmora\\R20\\sv";
  const std::vector<CString> names = {L"COM1.DAT", L"a:b.DAT", L"aux .DAT"};
  MakeFile(former + L"\\" + names[0], "taken over");
  MakeFile(CString(kShared) + L"\\" + names[1], "shared");
  MakeFile(L"older\\" + names[2], "older");
  Register(HKEY_LOCAL_MACHINE, kDist, L"InstallPath", At(L"prog"));
  MakeIni(former);
  CTundrilIni ini;
  EXPECT_EQ(ini.InitXPWay(20, L"sv", nullptr), 0);
  EXPECT_EQ(ini.m_cfgDir, At(user));
  EXPECT_EQ(ini.AllUserFileCheck(), -1);
  CString older = At(L"older");
  EXPECT_EQ(ini.User2Cfg(older), 1);
  EXPECT_EQ(NamesIn(At(user)), (std::vector<CString>{names[0], L"Velmora.ini", names[1], names[2]}));
  EXPECT_TRUE(messages_.boxes.empty());
}

}  // namespace
}  // namespace velmora
