#include "velmora/environment/user_data.h"

#include <chrono>
#include <filesystem>
#include <map>

#include "tests/environment/installed.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

constexpr wchar_t kShared[] = L"all\\Quorval\\Zennik\\Velmora\\sv";

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
  using enum UserFileState;
  const struct {
    CString name;
    int shared, user;  // seconds
    UserFileState state;
  } kBoth[] = {{L"newer.dat", 1, 0, kNewer}, {L"same.dat", 7, 7, kUpToDate}, {L"older.dat", 7, 8, kUpToDate}};
  std::map<CString, UserFileState> planned = {
      {L"blocked.dat", kNewer}, {L"vELMORA.INI", kOwnIniFile}, {L"missing.dat", kMissing}};
  MakeIni(kUser);
  MakeFolders(CString(kUser) + L"\\blocked.dat");  // does not stop the others
  MakeFile(CString(kShared) + L"\\folder\\x.dat", "shared");
  for (const auto& [name, state] : planned) MakeAged(kShared, name, 10'000);
  for (const auto& file : kBoth) {
    MakeAged(kShared, file.name, file.shared);
    MakeAged(kUser, file.name, file.user);
    planned[file.name] = file.state;
  }
  EXPECT_EQ(Planned(), planned);
  EXPECT_EQ(UserBytes(L"newer.dat"), "user");  // the plan changes nothing

  EXPECT_EQ(ini_.AllUserFileCheck(), -1);
  EXPECT_EQ(UserBytes(L"missing.dat"), "shared");
  EXPECT_EQ(UserBytes(L"Velmora.ini"), "[SYSTEM]\r\n");
  for (const auto& file : kBoth)
    EXPECT_EQ(UserBytes(file.name), file.state == kNewer ? "shared" : "user") << ToUtf8(file.name);
  // Copies keep the time of their source, so nothing is left to do.
  planned[L"missing.dat"] = planned[L"newer.dat"] = kUpToDate;
  EXPECT_EQ(Planned(), planned);
  EXPECT_TRUE(messages_.boxes.empty());
}

TEST_F(UserData, BinariesGoToTheRegisteredPlatform) {
  const auto register_platform = [&](const CString& version, const CString& folder) {
    Register(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Quorval\\Zennik\\" + version + L"\\Kernel Services",
             L"Root Directory", folder);
  };
  register_platform(L"30.1", At(L"other"));
  MakeIni(kUser);
  MakeIni(L"programs\\Quorval\\Binaries");  // no name is left out here
  const struct {
    const wchar_t* version;
    CString programs, platform;  // that of version 26.15
    CString destination;
  } kCases[] = {
      {L"", L"Saknas", At(L"usual"), L""},
      {L"", At(L"programs"), L"saknas", L""},
      {L"", At(L"programs"), At(L"usual"), MakeFolders(L"usual\\Binaries")},
      {L"30.1", At(L"programs"), At(L"usual"), MakeFolders(L"other\\Binaries")},
  };
  for (const auto& a : kCases) {
    ini_.WriteKey(L"SYSTEM", L"ZENNIKVER", a.version);
    Register(HKEY_LOCAL_MACHINE, L"Software\\Microsoft\\Windows\\CurrentVersion", L"ProgramFilesDir",
             a.programs);
    register_platform(L"26.15", a.platform);
    EXPECT_EQ(PlanUserFileCheck(ini_).binaries_destination, a.destination);
    ini_.AllUserFileCheck();
  }
  for (const wchar_t* copy : {L"usual\\Binaries\\Velmora.ini", L"other\\Binaries\\Velmora.ini"})
    EXPECT_EQ(ReadBytes(At(copy)), "[SYSTEM]\r\n");
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
  CString folder = At(L"backup");
  MakeFile(L"backup\\Tundril.par", "older");
  EXPECT_FALSE(PlanUserFileCheck(ini_).user_folder_exists);
  EXPECT_EQ(ini_.User2Cfg(folder), -1);  // the user has no folder yet
  MakeFile(CString(kUser) + L"\\OWN.dat", "own");
  EXPECT_EQ(ini_.User2Cfg(folder), 1);
  EXPECT_EQ(UserBytes(L"Tundril.par"), "older");
  CString former;
  EXPECT_EQ(ini_.User2Cfg(former), -1);  // nor a former one
  EXPECT_EQ(former, At(kFormerUser));
  for (const wchar_t* name : {L"a.par", L"B.KAL", L"c.Cfg", L"D.DAT", L"e.xml", L"f.sdf", L"own.DAT",
                              L"g.ini", L"PAR", L"h.par.bak", L"i.datx"})
    MakeFile(CString(kFormerUser) + L"\\" + name, "older");
  EXPECT_EQ(ini_.User2Cfg(former), 6);
  EXPECT_EQ(UserBytes(L"OWN.dat"), "own");
  EXPECT_EQ(NamesIn(At(kUser)).size(), 8U);
  ini_.m_iniPath = L"Velmora.ini";  // tells no user folder
  EXPECT_EQ(ini_.User2Cfg(folder), -1);
  EXPECT_FALSE(PlanUserFileCheck(ini_).user_folder_exists);
}

}  // namespace
}  // namespace velmora
