// File names that other systems take for a device or a stream.
#include <gtest/gtest.h>

#include "tests/environment/installed.h"
#include "velmora/environment/tundril_ini.h"

namespace velmora {
namespace {

class ListedNames : public Installed {};

TEST_F(ListedNames, AreNotCopied) {
  RegisterDataFolders();
  for (const CString& folder : {CString(kShared), CString(L"older"), CString(kFormerUser)})
    for (const wchar_t* name : {L"CON", L"nul.DAT", L"COM1.DAT", L"aux .DAT", L"a:b.DAT", L"good.DAT"})
      MakeFile(folder + L"\\" + name, "listed");
  const std::vector<CString> copied = {L"Velmora.ini", L"good.DAT"};
  Register(HKEY_LOCAL_MACHINE, kDist, L"InstallPath", At(L"prog"));
  MakeIni(kFormerUser);
  CTundrilIni ini;
  EXPECT_EQ(ini.InitXPWay(20, L"sv", nullptr), 0);
  EXPECT_EQ(NamesIn(At(kUser)), copied);
  EXPECT_EQ(messages_.boxes.size(), 5U);
  for (const MessageBoxCall& box : messages_.boxes)
    EXPECT_EQ(box.text.Left(26), L"Kunde inte kopiera filen:\n");

  EXPECT_EQ(ini.AllUserFileCheck(), -1);
  CString older = At(L"older");
  EXPECT_EQ(ini.User2Cfg(older), 0);  // the good one exists
  EXPECT_EQ(NamesIn(At(kUser)), copied);
  EXPECT_EQ(messages_.boxes.size(), 5U);
}

}  // namespace
}  // namespace velmora
