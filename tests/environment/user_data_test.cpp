#include "velmora/environment/user_data.h"

#include <chrono>
#include <map>
#include <string>

#include "tests/environment/installed.h"
#include "velmora/environment/listed_files.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

using std::chrono::seconds;

constexpr wchar_t kUser[] = L"user\\Quorval\\Zennik\\Velmora\\R20\\sv";
constexpr wchar_t kShared[] = L"all\\Quorval\\Zennik\\Velmora\\sv";
constexpr wchar_t kFormerUser[] = L"user\\Brovald\\Zennik\\Velmora\\R20\\sv";

class UserData : public Installed {
 protected:
  UserData() {
    RegisterDataFolders();
    ini_.m_useIniFile = 1;
    ini_.m_iniPath = At(CString(kUser) + L"\\Velmora.ini");
  }
  CString MakeIni(std::string_view lines = "") const {
    return MakeFile(CString(kUser) + L"\\Velmora.ini", "[SYSTEM]\r\n" + std::string(lines));
  }
  CString MakeAged(const wchar_t* folder, const wchar_t* name, const char* bytes, seconds time) const {
    const CString path = MakeFile(CString(folder) + L"\\" + name, bytes);
    SetModified(path, time);
    return path;
  }
  std::string UserBytes(const wchar_t* name) const { return ReadBytes(At(CString(kUser) + L"\\" + name)); }
  // What is planned for each source file, by its path below the test's folder.
  std::map<CString, UserFileState> Planned() const {
    std::map<CString, UserFileState> states;
    for (const UserFile& file : PlanUserFileCheck(ini_).files)
      states[file.source.Mid(folder_.Path().GetLength() + 1)] = file.state;
    return states;
  }

  CTundrilIni ini_;
};

TEST(SplitIniPath, TakesTheLastTwoFolders) {
  const struct {
    const wchar_t* path;
    const wchar_t* sub;
    const wchar_t* release;
  } kCases[] = {
      {L"D:\\Quorval\\Zennik\\Velmora\\R20\\sv\\Velmora.ini", L"sv", L"R20"},
      {L"R20\\sv\\Velmora.ini", L"sv", L"R20"},
      {L"D:\\Data\\R20\\long\\Velmora.ini", L"ng", L"0\\l"},
      {L"sv\\Velmora.ini", L"sv", L""},
      {L"Velmora.ini", L"", L""},
      {L"", L"", L""},
  };
  for (const auto& a : kCases) {
    EXPECT_EQ(SplitIniPath(a.path).sub, a.sub) << ToUtf8(a.path);
    EXPECT_EQ(SplitIniPath(a.path).release, a.release) << ToUtf8(a.path);
  }
}

TEST_F(UserData, MissingAndOlderFilesAreCopied) {
  MakeIni();
  SetModified(MakeIni(), seconds(-100));
  MakeAged(kShared, L"new.dat", "shared", seconds(0));
  MakeAged(kShared, L"newer.dat", "shared", seconds(1));
  MakeAged(kUser, L"newer.dat", "user", seconds(0));
  MakeAged(kShared, L"same.dat", "shared", seconds(7));
  MakeAged(kUser, L"same.dat", "user", seconds(7));
  MakeAged(kShared, L"older.dat", "shared", seconds(7));
  MakeAged(kUser, L"older.dat", "user", seconds(8));
  MakeAged(kShared, L"vELMORA.INI", "[SHARED]", seconds(1000));
  MakeAged(kUser, L"own.dat", "user", seconds(0));
  MakeFile(CString(kShared) + L"\\folder\\x.dat", "shared");

  const CString shared = CString(kShared) + L"\\";
  EXPECT_EQ(Planned(), (std::map<CString, UserFileState>{
                           {shared + L"new.dat", UserFileState::kMissing},
                           {shared + L"newer.dat", UserFileState::kNewer},
                           {shared + L"same.dat", UserFileState::kUpToDate},
                           {shared + L"older.dat", UserFileState::kUpToDate},
                           {shared + L"vELMORA.INI", UserFileState::kOwnIniFile},
                       }));
  EXPECT_EQ(UserBytes(L"newer.dat"), "user");  // the plan changes nothing

  EXPECT_EQ(ini_.AllUserFileCheck(), -1);
  EXPECT_EQ(UserBytes(L"new.dat"), "shared");
  EXPECT_EQ(UserBytes(L"newer.dat"), "shared");
  EXPECT_EQ(UserBytes(L"same.dat"), "user");
  EXPECT_EQ(UserBytes(L"older.dat"), "user");
  EXPECT_EQ(UserBytes(L"own.dat"), "user");
  EXPECT_EQ(UserBytes(L"Velmora.ini"), "[SYSTEM]\r\n");
  // Copies keep the time of their source, so nothing is left to do.
  for (const auto& [source, state] : Planned())
    EXPECT_TRUE(state == UserFileState::kUpToDate || state == UserFileState::kOwnIniFile) << ToUtf8(source);
}

TEST_F(UserData, CopyThatFailsDoesNotStopTheOthers) {
  MakeIni();
  MakeAged(kShared, L"a.dat", "shared", std::chrono::years(50));
  MakeAged(kShared, L"b.dat", "shared", seconds(0));
  MakeFolders(CString(kUser) + L"\\a.dat");
  ini_.AllUserFileCheck();
  EXPECT_EQ(UserBytes(L"b.dat"), "shared");
  EXPECT_EQ(Planned()[CString(kShared) + L"\\a.dat"], UserFileState::kNewer);
  EXPECT_TRUE(messages_.boxes.empty());
}

class Binaries : public UserData {
 protected:
  Binaries() {
    RegisterPlatform(L"26.15", MakeFolders(L"platform"));
    RegisterPlatform(L"30.1", MakeFolders(L"platform30"));
    Register(HKEY_LOCAL_MACHINE, kWindowsKey, L"ProgramFilesDir", At(L"programs"));
    MakeFolders(L"platform\\Binaries");
    MakeFolders(L"platform30\\Binaries");
    MakeFile(L"programs\\Quorval\\Binaries\\core.dll", "binary");
    MakeFile(L"programs\\Quorval\\Binaries\\Velmora.ini", "also");
  }
  void RegisterPlatform(const CString& version, const CString& folder) {
    Register(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Quorval\\Zennik\\" + version + L"\\Kernel Services",
             L"Root Directory", folder);
  }
};

TEST_F(Binaries, GoToThePlatformOfTheDefaultVersion) {
  MakeIni();
  const UserFilePlan plan = PlanUserFileCheck(ini_);
  EXPECT_EQ(plan.binaries_source, At(L"programs\\Quorval\\Binaries"));
  EXPECT_EQ(plan.binaries_destination, At(L"platform\\Binaries"));
  ini_.AllUserFileCheck();
  EXPECT_EQ(ReadBytes(At(L"platform\\Binaries\\core.dll")), "binary");
  EXPECT_EQ(ReadBytes(At(L"platform\\Binaries\\Velmora.ini")), "also");  // no name is left out here
  EXPECT_EQ(ReadBytes(At(L"platform30\\Binaries\\core.dll")), "");
}

TEST_F(Binaries, GoToThePlatformThatTheIniFileNames) {
  MakeIni("ZENNIKVER=30.1\r\n");
  ini_.AllUserFileCheck();
  EXPECT_EQ(ReadBytes(At(L"platform\\Binaries\\core.dll")), "");
  EXPECT_EQ(ReadBytes(At(L"platform30\\Binaries\\core.dll")), "binary");
}

TEST_F(Binaries, StayWhenTheUserFolderOrARegisteredFolderIsMissing) {
  ini_.AllUserFileCheck();  // no user folder
  EXPECT_FALSE(PlanUserFileCheck(ini_).user_folder_exists);
  EXPECT_EQ(PlanUserFileCheck(ini_).user_folder, At(kUser));
  MakeIni();
  Register(HKEY_LOCAL_MACHINE, kWindowsKey, L"ProgramFilesDir", L"Saknas");
  ini_.AllUserFileCheck();
  Register(HKEY_LOCAL_MACHINE, kWindowsKey, L"ProgramFilesDir", At(L"programs"));
  RegisterPlatform(L"26.15", L"saknas");
  ini_.AllUserFileCheck();
  EXPECT_EQ(ReadBytes(At(L"platform\\Binaries\\core.dll")), "");
  RegisterPlatform(L"26.15", At(L"platform"));
  ini_.m_iniPath = L"Velmora.ini";  // tells no user folder
  ini_.AllUserFileCheck();
  EXPECT_EQ(ReadBytes(At(L"platform\\Binaries\\core.dll")), "");
}

TEST_F(UserData, FolderOfTooLongANameHasNoFiles) {
  CString folder = L"long";
  while (At(folder).GetLength() < kLongestFolder - 11) folder += L"\\123456789";
  folder += L"\\" + CString(L'x', kLongestFolder - At(folder).GetLength() - 2);
  ASSERT_EQ(At(folder).GetLength(), kLongestFolder - 1);
  MakeFolders(folder);
  MakeFolders(folder + L"y");
  if (!IsFolder(At(folder + L"y"))) GTEST_SKIP() << "the system has no such long paths";
  MakeFile(folder + L"\\f", "x");
  MakeFile(folder + L"y\\f", "x");
  EXPECT_EQ(FilesIn(At(folder)).size(), 1U);
  EXPECT_EQ(FilesIn(At(folder + L"y")).size(), 0U);
}

TEST_F(UserData, OlderSettingsAreBroughtWhereTheUserHasNone) {
  MakeIni();
  for (const wchar_t* name : {L"a.par", L"B.KAL", L"c.Cfg", L"D.DAT", L"e.xml", L"f.sdf", L"own.DAT",
                              L"g.ini", L"PAR", L"h.par.bak", L"i.datx"})
    MakeFile(CString(kFormerUser) + L"\\" + name, "older");
  MakeFile(CString(kUser) + L"\\OWN.dat", "own");
  CString folder;
  EXPECT_EQ(ini_.User2Cfg(folder), 6);
  EXPECT_EQ(folder, At(kFormerUser));
  EXPECT_EQ(UserBytes(L"e.xml"), "older");
  EXPECT_EQ(UserBytes(L"OWN.dat"), "own");
  EXPECT_EQ(NamesIn(At(kUser)).size(), 8U);
  EXPECT_EQ(ini_.User2Cfg(folder), 0);
}

TEST_F(UserData, OlderSettingsComeFromTheFolderGiven) {
  CString folder = At(L"backup");
  MakeFile(L"backup\\Tundril.par", "older");
  EXPECT_EQ(ini_.User2Cfg(folder), -1);  // the user has no folder yet
  MakeIni();
  EXPECT_EQ(ini_.User2Cfg(folder), 1);
  EXPECT_EQ(folder, At(L"backup"));
  EXPECT_EQ(UserBytes(L"Tundril.par"), "older");
  CString former;
  EXPECT_EQ(ini_.User2Cfg(former), -1);  // nor a former one
  EXPECT_EQ(former, At(kFormerUser));
  ini_.m_iniPath.Empty();
  EXPECT_EQ(ini_.User2Cfg(folder), -1);
}

}  // namespace
}  // namespace velmora
