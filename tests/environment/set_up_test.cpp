// CTundrilIni::InitXPWay.
#include <chrono>

#include "tests/environment/installed.h"
#include "velmora/environment/program_folder.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/files.h"
#include "velmora/platform/process.h"
#include "velmora/platform/shell_folders.h"

namespace velmora {
namespace {

constexpr wchar_t kUser[] = L"user\\Quorval\\Zennik\\Velmora\\R20\\sv\\";
constexpr wchar_t kFormerUser[] = L"user\\Brovald\\Zennik\\Velmora\\R20\\sv\\";

class SetUp : public Installed {
 protected:
  SetUp() { RegisterDataFolders(); }
  void Install(const wchar_t* key, const CString& folder) {
    Register(HKEY_LOCAL_MACHINE, key, L"InstallPath", folder);
  }
  CString UserIni() const { return At(CString(kUser) + L"Velmora.ini"); }
  CString MakeUserIni(std::string_view lines) const {
    return MakeFile(CString(kUser) + L"Velmora.ini", "[SYSTEM]\r\n" + std::string(lines));
  }
  // Runs the set-up for installed programs; what it showed is in messages_.
  int RunInstalled(CTundrilIni* ini) { return ini->InitXPWay(20, L"sv", nullptr); }
};

TEST(ProgramFolder, IsCutFromTheCommandLine) {
  const struct {
    const wchar_t* line;
    const wchar_t* folder;
    const wchar_t* parent;
  } kCases[] = {
      {L"C:\\Suite\\Prog\\a.exe", L"C:\\Suite\\Prog", L"C:\\Suite"},
      {L"  \"C:\\My Suite\\Prog\\a.exe\"  ", L"C:\\My Suite\\Prog", L"C:\\My Suite"},
      {L"\"C:\\My Suite\\Prog\\a.exe\" C:\\x\\y.vl", L"C:\\MY SUITE\\PROG", L"C:\\MY SUITE"},
      {L"C:\\My Suite\\Prog\\å.exe C:\\b\\c.exe", L"C:\\MY SUITE\\PROG", L"C:\\MY SUITE"},  // the first .EXE
      {L"\"C:\\S\\Å\\a.ExE\"C:\\x\\y z", L"C:\\S\\Å", L"C:\\S"},
      {L"C:\\S\\å\\a.exe x", L"C:\\S\\å", L"C:\\S"},  // a to z only
      {L"\\usr\\bin\\velmora env \\tmp\\x", L"\\USR\\BIN", L"\\USR"},
      {L"\"\\my bin\\velmora\" \\tmp\\x", L"\\MY BIN", L""},
      {L"C:\\a.exe", L"C:", L""},
      {L"a.exe", L"", L""},
      {L"\"", L"", L""},
      {L"", L"", L""},
  };
  for (const auto& a : kCases) {
    EXPECT_EQ(ProgramFolderFromCommandLine(a.line, false), a.folder) << ToUtf8(a.line);
    EXPECT_EQ(ProgramFolderFromCommandLine(a.line, true), a.parent) << ToUtf8(a.line);
  }
}

TEST(FormerMakerPath, ReplacesTheMakersFolderOnly) {
  EXPECT_EQ(FormerMakerPath(L"C:\\Quorval\\Zennik\\Quorval\\Zennik\\Velmora\\a"),
            L"C:\\Quorval\\Zennik\\Brovald\\Zennik\\Velmora\\a");
  EXPECT_EQ(FormerMakerPath(L"C:\\Tundril\\Velmora.ini"), L"");
  EXPECT_EQ(FormerMakerPath(L""), L"");
}

TEST_F(SetUp, OtherModesAreRefused) {
  Install(kDist, At(L"prog"));
  for (const int mode : {2, 5, 19, 21}) {
    CTundrilIni ini;
    CopyToField(ini.m_package, L"OLD");
    EXPECT_EQ(ini.InitXPWay(mode, L"sv", nullptr), -1);
    EXPECT_EQ(ini.m_programDir, L"C:\\Tundril");
    EXPECT_EQ(ini.m_useIniFile, 1);
    EXPECT_EQ(CString(ini.InstallPackage()), L"");
  }
  EXPECT_TRUE(messages_.boxes.empty());
}

TEST_F(SetUp, FirstRegisteredInstallationGivesTheFolder) {
  const CString ini_path = MakeUserIni(
      "CIVILDRAWINGEXE=civil\r\nCIILDRAWINGEXE=wrong\r\nACADVER=7\r\n"
      "CADPLATFORM=ACAD\r\nQUORVALDRAWINGVER=25\r\n");
  CTundrilIni ini;
  EXPECT_EQ(RunInstalled(&ini), -1);
  Install(kR20, L"C:\\Third\\");
  EXPECT_EQ(RunInstalled(&ini), 0);
  EXPECT_EQ(ini.m_programDir, L"C:\\Third\\");
  Install(kReleaseKey, L"C:\\Second");
  Install(kDist, L"SAKNAS");  // as good as not there
  Register(HKEY_LOCAL_MACHINE, kReleaseKey, L"Package", L"BASE");
  EXPECT_EQ(RunInstalled(&ini), 0);
  EXPECT_EQ(ini.m_programDir, L"C:\\Second");
  EXPECT_EQ(CString(ini.InstallPackage()), L"");  // told to programs that are found registered only
  EXPECT_EQ(ini.m_useIniFile, 1);
  EXPECT_EQ(ini.m_iniPath, ini_path);
  EXPECT_EQ(ini.m_cfgDir, ini_path.Left(ini_path.ReverseFind(L'\\')));
  EXPECT_EQ(ini.m_civilDrawingExe, L"civil");
  EXPECT_EQ(ini.m_acadVer, 7);
  EXPECT_EQ(ini.m_cadPlatform, L"ACAD");
  EXPECT_EQ(ini.m_quorvalDrawingVer, 25);
  EXPECT_EQ(ApplicationProfile(), L"");
}

TEST_F(SetUp, RegisteredProgramReadsThroughTheApplicationProfile) {
  const CString ini_path = MakeUserIni("DOCEXE=viewer\r\n");
  SetApplicationProfile(L"before.ini");
  SetCommandLine(L"\"" + At(L"Suite\\a.exe") + L"\"");
  Install(kDist, L"C:\\Other");
  Install(kReleaseKey, At(L"SUITE\\"));
  Register(HKEY_LOCAL_MACHINE, kReleaseKey, L"Package", CString(L'P', 100));
  CTundrilIni ini;
  EXPECT_EQ(ini.InitXPWay(0, L"sv", nullptr), 0);
  EXPECT_EQ(ini.m_programDir, At(L"Suite"));
  EXPECT_EQ(CString(ini.InstallPackage()), CString(L'P', 63));
  EXPECT_EQ(ini.m_useIniFile, 0);
  EXPECT_EQ(ini.m_iniPath, ini_path);
  EXPECT_EQ(ApplicationProfile(), ini_path);
  EXPECT_EQ(ini.m_docExe, L"viewer");
}

TEST_F(SetUp, EarlierIniPathServesProgramsThatAreNotRegistered) {
  Install(kDist, L"C:\\Prog");
  const CString ini_path = MakeUserIni("DOCEXE=viewer\r\n");
  CTundrilIni first;
  ASSERT_EQ(RunInstalled(&first), 0);
  SetApplicationProfile(L"before.ini");
  CTundrilIni second;
  EXPECT_EQ(second.InitXPWay(0, L"sv", L"D:\\Elsewhere"), 0);
  EXPECT_EQ(second.m_programDir, L"D:\\Elsewhere");
  EXPECT_EQ(second.m_cfgDir, L"C:\\Tundril");
  EXPECT_EQ(second.m_useIniFile, 1);
  EXPECT_EQ(second.m_docExe, L"viewer");
  EXPECT_EQ(ApplicationProfile(), L"before.ini");
  CTundrilIni third;
  EXPECT_EQ(third.InitXPWay(1, L"sv", L"D:\\Elsewhere"), 0);
  EXPECT_EQ(third.m_useIniFile, 0);
  EXPECT_EQ(ApplicationProfile(), ini_path);
}

TEST_F(SetUp, MissingIniFileIsShownExceptInModeNought) {
  CTundrilIni ini;
  EXPECT_EQ(ini.InitXPWay(0, L"sv", L"C:\\Prog"), -2020);
  EXPECT_TRUE(messages_.boxes.empty());
  EXPECT_EQ(ini.InitXPWay(1, L"sv", L"C:\\Prog"), -2);
  Install(kDist, L"C:\\Prog");
  EXPECT_EQ(ini.InitXPWay(0, L"sv", L"C:\\Prog"), -2);  // registered, so it is as mode 20
  EXPECT_EQ(RunInstalled(&ini), -2);
  MakeFolders(CString(kUser) + L"Velmora.ini");  // a folder is no ini file
  EXPECT_EQ(RunInstalled(&ini), -2);
  ASSERT_EQ(messages_.boxes.size(), 4U);
  for (const MessageBoxCall& box : messages_.boxes) {
    EXPECT_EQ(box.text, L"Fel! Hittar inte data för Velmora för aktuell användare. Starta upp via Lindqvar!");
    EXPECT_EQ(box.style & 0xFFU, static_cast<unsigned>(MB_OK | MB_ICONEXCLAMATION));
  }
}

TEST_F(SetUp, ShellNamesTheDataFolderThatTheRegistryLacks) {
  Install(kDist, L"C:\\Prog");
  for (const wchar_t* value : {L"Saknas", L"  "}) {
    Register(HKEY_CURRENT_USER, kShellFolders, L"Appdata", value);
    CTundrilIni ini;
    RunInstalled(&ini);
    EXPECT_EQ(ini.m_cfgDir, UserApplicationData() + L"\\Quorval\\Zennik\\Velmora\\R20\\sv");
  }
}

TEST_F(SetUp, DataUnderTheFormerNameAreTakenOver) {
  Install(kDist, L"C:\\Prog");
  const CString former = kFormerUser;
  MakeFile(former + L"Velmora.ini", "[SYSTEM]\r\nDOCEXE=viewer\r\n");
  SetModified(MakeFile(former + L"KODFIL.DAT", "codes"), std::chrono::hours(5));
  MakeFile(former + L"sub\\not.me", "x");
  MakeFile(CString(kUser) + L"KODFIL.DAT", "is overwritten");
  CTundrilIni ini;
  EXPECT_EQ(RunInstalled(&ini), 0);
  EXPECT_EQ(ini.m_iniPath, UserIni());
  EXPECT_EQ(ini.m_docExe, L"viewer");
  EXPECT_EQ(NamesIn(At(CString(kUser).Left(CString(kUser).GetLength() - 1))),
            (std::vector<CString>{L"KODFIL.DAT", L"Velmora.ini"}));
  EXPECT_EQ(ReadBytes(At(CString(kUser) + L"KODFIL.DAT")), "codes");
  EXPECT_EQ(GetFileStatus(At(CString(kUser) + L"KODFIL.DAT"))->modified,
            GetFileStatus(At(former + L"KODFIL.DAT"))->modified);
  EXPECT_TRUE(messages_.boxes.empty());
  // Once there, the data are the user's own and stay.
  WriteBytes(At(CString(kUser) + L"KODFIL.DAT"), "edited");
  EXPECT_EQ(RunInstalled(&ini), 0);
  EXPECT_EQ(ReadBytes(At(CString(kUser) + L"KODFIL.DAT")), "edited");
}

// The ini file goes last: its presence says that the move is done.
TEST_F(SetUp, FailedCopyIsShownAndTheOthersGoOn) {
  Install(kDist, L"C:\\Prog");
  for (const wchar_t* name : {L"Velmora.ini", L"A.DAT", L"Z.DAT"})
    MakeFile(CString(kFormerUser) + name, "[SYSTEM]\r\n");
  const CString z = MakeFolders(CString(kUser) + L"Z.DAT");
  const CString ini_path = MakeFolders(CString(kUser) + L"Velmora.ini");
  CTundrilIni ini;
  EXPECT_EQ(RunInstalled(&ini), -2);
  ASSERT_EQ(messages_.boxes.size(), 3U);
  EXPECT_EQ(messages_.boxes[0].text,
            L"Kunde inte kopiera filen:\n" + At(CString(kFormerUser) + L"Z.DAT") + L"\ntill:\n" + z);
  EXPECT_EQ(messages_.boxes[1].text.Right(ini_path.GetLength()), ini_path);
  EXPECT_EQ(ReadBytes(At(CString(kUser) + L"A.DAT")), "[SYSTEM]\r\n");
  RemoveEmptyFolder(ini_path);
  EXPECT_EQ(RunInstalled(&ini), 0);
  EXPECT_EQ(messages_.boxes.size(), 4U);
}

TEST_F(SetUp, FoldersThatCannotBeMadeAreNamed) {
  Install(kDist, L"C:\\Prog");
  MakeFile(CString(kFormerUser) + L"Velmora.ini", "[SYSTEM]\r\n");
  const CString blocked = MakeFile(L"user\\Quorval", "a file");
  CTundrilIni ini;
  EXPECT_EQ(RunInstalled(&ini), -6);
  ASSERT_EQ(messages_.boxes.size(), 1U);
  EXPECT_EQ(messages_.boxes[0].text, L"Kunde inte skapa applikationens huvudkatalog:\n" + blocked);
  RemoveWholeFile(blocked);
  MakeFile(L"user\\Quorval\\Zennik", "a file");
  EXPECT_EQ(RunInstalled(&ini), -4);
  ASSERT_EQ(messages_.boxes.size(), 2U);
  EXPECT_EQ(messages_.boxes[1].text,
            L"Kunde inte skapa lokala kataloger:\n" + At(L"user\\Quorval\\Zennik\\Velmora\\R20\\sv"));
}

}  // namespace
}  // namespace velmora
