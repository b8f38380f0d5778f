// CTundrilIni::InitXPWay.
#include "tests/environment/installed.h"
#include "velmora/environment/running_program.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/files.h"
#include "velmora/platform/process.h"
#include "velmora/platform/shell_folders.h"

namespace velmora {
namespace {

class SetUp : public Installed {
 protected:
  SetUp() { RegisterDataFolders(); }
  void Install(const wchar_t* key, const CString& folder) {
    Register(HKEY_LOCAL_MACHINE, key, L"InstallPath", folder);
  }
  int Run(int mode, const wchar_t* folder = nullptr) { return ini_.InitXPWay(mode, L"sv", folder); }
  // What was shown since the last question.
  std::vector<CString> Shown() {
    std::vector<CString> texts;
    for (const MessageBoxCall& box : messages_.boxes) texts.push_back(box.text);
    messages_.boxes.clear();
    return texts;
  }

  CTundrilIni ini_;
};

TEST(ProgramFolder, IsCutFromTheCommandLine) {
  const wchar_t* const kCases[][3] = {
      {L"C:\\Suite\\Prog\\a.exe", L"C:\\Suite\\Prog", L"C:\\Suite"},
      {L"  \"C:\\My Suite\\Prog\\a.exe\"  ", L"C:\\My Suite\\Prog", L"C:\\My Suite"},
      {L"\"C:\\My Suite\\Prog\\a.exe\" C:\\x\\y.vl", L"C:\\MY SUITE\\PROG", L"C:\\MY SUITE"},
      {L"C:\\My Suite\\Prog\\å.exe C:\\b\\c.exe", L"C:\\MY SUITE\\PROG", L"C:\\MY SUITE"},  // the first .EXE
      {L"C:\\S\\å\\a.ExE x", L"C:\\S\\å", L"C:\\S"},                                        // a to z only
      {L"\\usr\\bin\\velmora env \\tmp\\x", L"\\USR\\BIN", L"\\USR"},
      {L"\"\\my bin\\velmora\" \\tmp\\x", L"\\MY BIN", L""},
      {L"a.exe", L"", L""},
  };
  for (const auto& [line, folder, parent] : kCases) {
    EXPECT_EQ(ProgramFolderFromCommandLine(line, false), folder) << ToUtf8(line);
    EXPECT_EQ(ProgramFolderFromCommandLine(line, true), parent) << ToUtf8(line);
  }
}

TEST(FormerMakerPath, ReplacesTheMakersFolderOnly) {
  EXPECT_EQ(FormerMakerPath(L"C:\\Quorval\\Zennik\\Quorval\\Zennik\\Velmora\\a"),
            L"C:\\Quorval\\Zennik\\Brovald\\Zennik\\Velmora\\a");
}

TEST_F(SetUp, FirstRegisteredInstallationGivesTheFolder) {
  MakeIni(kUser, "CIVILDRAWINGEXE=civil\r\nCADPLATFORM=ACAD\r\nQUORVALDRAWINGVER=25\r\n");
  EXPECT_EQ(Run(20), -1);
  Install(kR20, L"C:\\Third\\");
  EXPECT_EQ(Run(20), 0);
  EXPECT_EQ(ini_.m_programDir, L"C:\\Third\\");
  Install(kReleaseKey, L"C:\\Second");
  Install(kDist, L"SAKNAS");  // as good as not there
  Register(HKEY_LOCAL_MACHINE, kReleaseKey, L"Package", L"BASE");
  CopyToField(ini_.m_package, L"OLD");
  for (const int other_mode : {2, 19, 21}) EXPECT_EQ(Run(other_mode), -1);
  EXPECT_EQ(Run(20), 0);
  EXPECT_EQ(ini_.m_programDir, L"C:\\Second");
  EXPECT_EQ(CString(ini_.InstallPackage()), L"");  // told to programs that are found registered only
  EXPECT_EQ(ini_.m_useIniFile, 1);
  EXPECT_EQ(ini_.m_civilDrawingExe, L"civil");
  EXPECT_EQ(ini_.m_cadPlatform, L"ACAD");
  EXPECT_EQ(ini_.m_quorvalDrawingVer, 25);
  EXPECT_EQ(ApplicationProfile(), L"");
  EXPECT_EQ(Shown(), std::vector<CString>());
  // The shell names the data folder that the registry lacks.
  Register(HKEY_CURRENT_USER, kShellFolders, L"Appdata", L"  ");
  Run(20);
  EXPECT_EQ(ini_.m_cfgDir, UserApplicationData() + L"\\Quorval\\Zennik\\Velmora\\R20\\sv");
}

TEST_F(SetUp, ProgramsFindTheUsersIniFileRegisteredOrNot) {
  const CString ini_path = MakeIni(kUser, "DOCEXE=viewer\r\n");
  SetApplicationProfile(L"before.ini");
  SetCommandLine(L"\"" + At(L"Suite\\a.exe") + L"\"");
  Install(kDist, L"C:\\Other");
  Install(kReleaseKey, At(L"SUITE\\"));
  Register(HKEY_LOCAL_MACHINE, kReleaseKey, L"Package", CString(L'P', 100));
  EXPECT_EQ(Run(0), 0);
  EXPECT_EQ(ini_.m_programDir, At(L"Suite"));
  EXPECT_EQ(CString(ini_.InstallPackage()), CString(L'P', 63));
  EXPECT_EQ(ini_.m_useIniFile, 0);
  EXPECT_EQ(ini_.m_iniPath, ini_path);
  EXPECT_EQ(ApplicationProfile(), ini_path);
  // One that is not registered reads the file that the call before found.
  SetApplicationProfile(L"before.ini");
  for (const int mode : {0, 1}) {
    ini_ = CTundrilIni();
    EXPECT_EQ(Run(mode, L"D:\\Elsewhere"), 0);
    EXPECT_EQ(ini_.m_programDir, L"D:\\Elsewhere");
    EXPECT_EQ(ini_.m_cfgDir, L"C:\\Tundril");
    EXPECT_EQ(ini_.m_useIniFile, 1 - mode);
    EXPECT_EQ(ini_.m_docExe, L"viewer");
    EXPECT_EQ(ApplicationProfile(), mode == 0 ? CString(L"before.ini") : ini_path);
  }
}

TEST_F(SetUp, MissingIniFileIsShownExceptInModeNought) {
  EXPECT_EQ(Run(0, L"C:\\Prog"), -2020);
  EXPECT_EQ(Shown(), std::vector<CString>());
  EXPECT_EQ(Run(1, L"C:\\Prog"), -2);
  Install(kDist, L"C:\\Prog");
  EXPECT_EQ(Run(0, L"C:\\Prog"), -2);  // registered, so it is as mode 20
  MakeFolders(CString(kUser) + L"\\Velmora.ini");
  EXPECT_EQ(Run(20), -2);  // a folder is no ini file
  EXPECT_EQ(Shown(), std::vector<CString>(3,
                                          L"Fel! Hittar inte data för Velmora för aktuell användare. "
                                          L"Starta upp via Lindqvar!"));
}

TEST_F(SetUp, DataUnderTheFormerNameAreTakenOver) {
  Install(kDist, L"C:\\Prog");
  MakeIni(kFormerUser, "DOCEXE=viewer\r\n");
  for (const wchar_t* name : {L"\\KODFIL.DAT", L"\\Z.DAT", L"\\sub\\not.me"})
    MakeFile(CString(kFormerUser) + name, "codes");
  const CString codes = MakeFile(CString(kUser) + L"\\KODFIL.DAT", "is overwritten");
  const CString z = MakeFolders(CString(kUser) + L"\\Z.DAT");  // does not stop the others
  const CString ini_path = MakeFolders(CString(kUser) + L"\\Velmora.ini");
  EXPECT_EQ(Run(20), -2);
  const std::vector<CString> shown = Shown();
  ASSERT_EQ(shown.size(), 3U);
  EXPECT_EQ(shown[0], L"Kunde inte kopiera filen:\n" + At(kFormerUser) + L"\\Z.DAT\ntill:\n" + z);
  // The ini file goes last: its presence says that the move is done.
  EXPECT_EQ(shown[1].Right(ini_path.GetLength()), ini_path);
  EXPECT_EQ(ReadBytes(codes), "codes");
  RemoveEmptyFolder(ini_path);
  EXPECT_EQ(Run(20), 0);
  EXPECT_EQ(ini_.m_docExe, L"viewer");
  EXPECT_EQ(NamesIn(At(kUser)), (std::vector<CString>{L"KODFIL.DAT", L"Velmora.ini", L"Z.DAT"}));
  // Once there, the data are the user's own and stay.
  WriteBytes(codes, "edited");
  EXPECT_EQ(Run(20), 0);
  EXPECT_EQ(ReadBytes(codes), "edited");
}

}  // namespace
}  // namespace velmora
