#include "velmora/environment/user_data.h"

#include <chrono>
#include <filesystem>
#include <map>

#include "tests/environment/installed.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

class UserData : public Installed {
 protected:
  UserData() {
    RegisterDataFolders();
    ini_.m_useIniFile = 1;
    ini_.m_iniPath = At(CString(kUser) + L"\\Velmora.ini");
  }
  // The bytes tell the folder; `seconds` count from the beginning of the test.
  void MakeAged(const CString& folder, const CString& name, int seconds) const {
    const std::string path =
        PathForDisplay(MakeFile(folder + L"\\" + name, folder == kUser ? "user" : "shared"));
    std::filesystem::last_write_time(std::u8string(path.begin(), path.end()),
                                     start_ + std::chrono::seconds(seconds));
  }
  // The names in the shared folder and what is planned for them.
  std::map<CString, UserFileState> Planned() const {
    std::map<CString, UserFileState> states;
    for (const UserFile& file : PlanUserFileCheck(ini_).files)
      states[file.source.Mid(At(kShared).GetLength() + 1)] = file.state;
    return states;
  }

  CTundrilIni ini_;
  const std::filesystem::file_time_type start_ = std::filesystem::file_time_type::clock::now();
};

TEST(SplitIniPath, TakesTheLastTwoFolders) {
  const wchar_t* const kCases[][3] = {
      {L"D:\\Quorval\\Zennik\\Velmora\\R20\\sv\\Velmora.ini", L"sv", L"R20"},
      {L"D:\\Data\\R20\\long\\Velmora.ini", L"ng", L"0\\l"},
      {L"sv\\Velmora.ini", L"sv", L""},
      {L"Velmora.ini", L"", L""},
  };
  for (const auto& [path, sub, release] : kCases) {
    EXPECT_EQ(SplitIniPath(path).sub, sub) << ToUtf8(path);
    EXPECT_EQ(SplitIniPath(path).release, release) << ToUtf8(path);
  }
}

TEST_F(UserData, MissingAndOlderFilesAreCopied) {
  const struct {
    const wchar_t* name;
    int shared, user;  // seconds; 0: there is none
    UserFileState state, state_after;
  } kFiles[] = {{L"blocked.dat", 9, 0, UserFileState::kNewer, UserFileState::kNewer},
                {L"vELMORA.INI", 9, 1, UserFileState::kOwnIniFile, UserFileState::kOwnIniFile},
                {L"missing.dat", 9, 0, UserFileState::kMissing, UserFileState::kUpToDate},
                {L"newer.dat", 2, 1, UserFileState::kNewer, UserFileState::kUpToDate},
                {L"same.dat", 7, 7, UserFileState::kUpToDate, UserFileState::kUpToDate},
                {L"older.dat", 7, 8, UserFileState::kUpToDate, UserFileState::kUpToDate}};
  std::map<CString, UserFileState> planned, planned_after;
  MakeFolders(CString(kUser) + L"\\blocked.dat");  // does not stop the others
  MakeFile(CString(kShared) + L"\\folder\\x.dat", "shared");
  for (const auto& file : kFiles) {
    MakeAged(kShared, file.name, file.name[0] == L'b' ? 10'000 : file.shared);
    if (file.user != 0) MakeAged(kUser, file.name, file.user);
    planned[file.name] = file.state;
    planned_after[file.name] = file.state_after;
  }
  EXPECT_EQ(Planned(), planned);
  EXPECT_EQ(UserBytes(L"newer.dat"), "user");  // the plan changes nothing
  EXPECT_EQ(ini_.AllUserFileCheck(), -1);
  for (const auto& file : kFiles)
    EXPECT_TRUE(file.name[0] == L'b' ||
                UserBytes(file.name) == (file.state == file.state_after ? "user" : "shared"))
        << ToUtf8(file.name);
  EXPECT_EQ(Planned(), planned_after);  // copies keep the time of their source
  EXPECT_TRUE(messages_.boxes.empty());
}

TEST_F(UserData, BinariesGoToTheRegisteredPlatform) {
  MakeIni(kUser);
  MakeIni(L"programs\\Quorval\\Binaries");  // no name is left out here
  // The version, the programs, the platform of the version, and where the files go.
  const CString kCases[][4] = {
      {L"", L"Saknas", At(L"usual"), L""},
      {L"", At(L"programs"), L"saknas", L""},
      {L"", At(L"programs"), At(L"usual"), MakeFolders(L"usual\\Binaries")},
      {L"30.1", At(L"programs"), At(L"other"), MakeFolders(L"other\\Binaries")},
  };
  for (const auto& [named, programs, platform, destination] : kCases) {
    const CString version = named.IsEmpty() ? CString(L"26.15") : named;
    ini_.WriteKey(L"SYSTEM", L"ZENNIKVER", named);
    Register(HKEY_LOCAL_MACHINE, L"Software\\Microsoft\\Windows\\CurrentVersion", L"ProgramFilesDir",
             programs);
    Register(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Quorval\\Zennik\\" + version + L"\\Kernel Services",
             L"Root Directory", platform);
    EXPECT_EQ(PlanUserFileCheck(ini_).binaries_destination, destination);
    ini_.AllUserFileCheck();
    EXPECT_TRUE(destination.IsEmpty() || ReadBytes(destination + L"\\Velmora.ini") == "[SYSTEM]\r\n");
  }
}

TEST_F(UserData, ThePlatformIsFoundInBothViewsOfTheRegistry) {
  MakeIni(kUser);
  Register(HKEY_LOCAL_MACHINE, L"Software\\Microsoft\\Windows\\CurrentVersion", L"ProgramFilesDir",
           At(L"programs"));
  for (const wchar_t* view : {L"Wow6432Node\\", L""}) {
    Register(HKEY_LOCAL_MACHINE, CString(L"SOFTWARE\\") + view + L"Quorval\\Zennik\\26.15\\Kernel Services",
             L"Root Directory", At(CString(L"platform") + view));
    EXPECT_EQ(PlanUserFileCheck(ini_).binaries_destination, At(CString(L"platform") + view) + L"\\Binaries");
  }
}

TEST_F(UserData, FolderOfTooLongANameHasNoFiles) {
  CString folder = L"long";
  while (At(folder).GetLength() < kLongestFolder - 11) folder += L"\\123456789";
  folder += L"\\" + CString(L'x', kLongestFolder - At(folder).GetLength() - 2);
  ASSERT_EQ(At(folder).GetLength(), kLongestFolder - 1);
  for (const CString& name : {folder, folder + L"y"}) MakeFile(name + L"\\f", "x");
  if (!IsFolder(At(folder + L"y"))) GTEST_SKIP() << "the system has no such long paths";
  EXPECT_EQ(FilesIn(At(folder)).size(), 1U);
  EXPECT_EQ(FilesIn(At(folder + L"y")).size(), 0U);
}

TEST_F(UserData, OlderSettingsAreBroughtWhereTheUserHasNone) {
  CString former;
  EXPECT_FALSE(PlanUserFileCheck(ini_).user_folder_exists);
  MakeFile(CString(kUser) + L"\\OWN.dat", "own");
  EXPECT_EQ(ini_.User2Cfg(former), -1);  // there is no former one
  EXPECT_EQ(former, At(kFormerUser));
  for (const wchar_t* name : {L"a.par", L"B.KAL", L"c.Cfg", L"D.DAT", L"e.xml", L"f.sdf", L"own.DAT",
                              L"g.ini", L"PAR", L"h.par.bak", L"i.datx"})
    MakeFile(CString(kFormerUser) + L"\\" + name, "older");
  EXPECT_EQ(ini_.User2Cfg(former), 6);
  EXPECT_EQ(UserBytes(L"OWN.dat"), "own");
  EXPECT_EQ(NamesIn(At(kUser)).size(), 7U);
  ini_.m_iniPath = L"Velmora.ini";  // tells no user folder
  EXPECT_EQ(ini_.User2Cfg(former), -1);
}

}  // namespace
}  // namespace velmora
