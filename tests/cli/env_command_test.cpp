// The env and project commands, run for real: on Linux with a registry and folders of the test's own.
#include <gtest/gtest.h>

#include <array>

#include "tests/cli/installed_command.h"
#include "velmora/platform/files.h"

namespace velmora::testing {
namespace {

using EnvCommand = InstalledCommand;

// What a newcomer does, in this order, with nothing set up before.
TEST_F(EnvCommand, FromInstallToAProjectsListing) {
  ExpectRefused(RunVelmora({"env", "get", "SYSTEM", "ACADVER"}), "velmora env install --to DIR");
  // What the installation registers goes with the test.
  Register(HKEY_LOCAL_MACHINE, kR20, L"InstallPath", L"");
  Register(HKEY_LOCAL_MACHINE, kR20, L"Package", L"");
  ASSERT_EQ(RunVelmora({"env", "install", "--to", Argument(L"inst")}).status, 0);

  const Ran show = RunVelmora({"env", "show", "--json"});
  EXPECT_EQ(RowOf(show.out, "field", "m_programDir")["value"], Argument(L"inst\\Program")) << show.out;
  EXPECT_EQ(RowOf(show.out, "field", "m_programDir")["from"], "registry, InstallPath");
  EXPECT_EQ(RowOf(show.out, "field", "m_acadVer")["from"], "Velmora.ini, SYSTEM ACADVER");
  EXPECT_EQ(RowOf(show.out, "field", "m_zipExe")["from"], "default");

  // A dry run tells and does nothing; then it is done, and then there is nothing to do.
  const char* const kFile = "MAPPAR.TXT";
  EXPECT_EQ(RowOf(RunVelmora({"env", "sync", "--dry-run", "--json"}).out, "file", kFile)["done"],
            "would be copied");
  const json copied = RowOf(RunVelmora({"env", "sync", "--json"}).out, "file", kFile);
  EXPECT_EQ(copied["state"], "missing");
  EXPECT_EQ(copied["done"], "copied");
  EXPECT_EQ(RowOf(RunVelmora({"env", "sync", "--json"}).out, "file", kFile)["state"], "up to date");

  EXPECT_EQ(RunVelmora({"env", "set", "SYSTEM", "ZIPEXE", "C:\\Verktyg\\zip å.exe"}).status, 0);
  EXPECT_EQ(RunVelmora({"env", "get", "system", "zipexe"}).out, "C:\\Verktyg\\zip å.exe\n");
  EXPECT_EQ(RunVelmora({"env", "set", "SYSTEM", "ZIPEXE", ""}).status, 0);
  ExpectRefused(RunVelmora({"env", "get", "SYSTEM", "ZIPEXE"}), "has no key \"ZIPEXE\"");
  ExpectRefused(RunVelmora({"env", "set", "SYSTEM", "MSG", "\xE6\xB0\xB4"}), "the file is unchanged");

  const Ran made = RunVelmora({"project", "new", Argument(L"proj"), "--tundril", "--harbel"});
  ASSERT_EQ(made.status, 0) << made.err;
  EXPECT_EQ(ReadBytes(At(L"proj\\HARBEL.DBF\\Harbel.krd")), "***");
  EXPECT_TRUE(FileOrFolderExists(At(L"proj\\Rapport\\Bilagor")));  // from the installation's folder list

  const Ran list = RunVelmora({"project", "list", Argument(L"proj\\*"), "--folders", "--csv"});
  for (const char* name : {"TUNDRIL.DBF,", "TUNDRIL.RIT,", "STACK,", "HARBEL.RIT,", "Rapport,"})
    EXPECT_NE(list.out.find(name), std::string::npos) << name << list.out;
}

TEST_F(EnvCommand, SetupSaysWhatItDecided) {
  const Ran without = RunVelmora({"env", "setup"});
  EXPECT_EQ(without.status, 1);
  EXPECT_NE(without.out.find("not registered"), std::string::npos) << without.out;
  Register(HKEY_LOCAL_MACHINE, kDist, L"InstallPath", At(L"prog"));
  MakeFile(L"user\\Quorval\\Zennik\\Velmora\\R20\\sv\\Velmora.ini", "[SYSTEM]\r\n");
  const Ran with = RunVelmora({"env", "setup"});
  EXPECT_EQ(with.status, 0) << with.err;
  EXPECT_NE(with.out.find(Argument(L"prog")), std::string::npos) << with.out;
}

TEST_F(EnvCommand, RegistryKeepsTextsAndNamesWhatIsWrong) {
  const std::string key = "HKCU/Software/velmora-command-test";
  const RegistryValue clean_up(HKEY_CURRENT_USER, L"Software\\velmora-command-test", L"Namn", L"");
  EXPECT_EQ(RunVelmora({"env", "registry", "set", key, "Namn", "Väg 1"}).status, 0);
  EXPECT_EQ(RunVelmora({"env", "registry", "get", key, "namn"}).out, "Väg 1\n");
  EXPECT_EQ(json::parse(RunVelmora({"env", "registry", "list", key, "--json"}).out)[0]["value"], "Väg 1");
  ExpectRefused(RunVelmora({"env", "registry", "get", key, "other"}), "has no value \"other\"");
  ExpectRefused(RunVelmora({"env", "registry", "get", "HKXX\\A", "n"}), "names no root");
}

TEST_F(EnvCommand, AnIniFileThatIsAFolderIsNamed) {
  Register(HKEY_LOCAL_MACHINE, kDist, L"InstallPath", At(L"prog"));
  const CString ini = At(L"user\\Quorval\\Zennik\\Velmora\\R20\\sv\\Velmora.ini");
  ExpectRefused(RunVelmora({"env", "get", "SYSTEM", "ACADVER"}),
                AsArgument(ini) + ": the current user has no");
  MakeFolders(L"user\\Quorval\\Zennik\\Velmora\\R20\\sv\\Velmora.ini");
  ExpectRefused(RunVelmora({"env", "get", "SYSTEM", "ACADVER"}), AsArgument(ini) + ": is not a readable file");
  ExpectRefused(RunVelmora({"env", "set", "SYSTEM", "ACADVER", "25"}), AsArgument(ini) + ": is not a readable file");
}

#if !defined(_WIN32)
TEST_F(EnvCommand, ADamagedRegistryIsToldAndLeftAlone) {
  const CString file = MakeFile(L"junk.db", "no database at all");
  const EnvironmentVariable registry(L"VELMORA_REGISTRY", file);
  ExpectRefused(RunVelmora({"env", "show"}), "VELMORA_REGISTRY");
  ExpectRefused(RunVelmora({"env", "install", "--to", Argument(L"inst")}), "VELMORA_REGISTRY");
  EXPECT_EQ(ReadBytes(file), "no database at all");
}
#endif

TEST_F(EnvCommand, AnExistingProjectIsAskedAboutAndADatabaseRefuses) {
  MakeFolders(L"proj");
  const Ran asked = RunVelmora({"project", "new", Argument(L"proj"), "--karsk"});
  EXPECT_EQ(asked.status, 1);
  EXPECT_NE(asked.err.find(Argument(L"proj") + " finns redan! Ska denna användas ändå? Nej (no terminal"),
            std::string::npos)
      << asked.err;
  EXPECT_FALSE(FileOrFolderExists(At(L"proj\\KARSK.DBF")));

  MakeFile(L"proj\\TUNDRIL.DBS", "data");
  EXPECT_EQ(RunVelmora({"project", "new", Argument(L"proj"), "--tundril"}).status, 1);
  EXPECT_FALSE(FileOrFolderExists(At(L"proj\\TUNDRIL.DBF")));
  EXPECT_EQ(ReadBytes(At(L"proj\\TUNDRIL.DBS")), "data");
}

TEST_F(EnvCommand, AFolderListMakesNothingOutsideTheProject) {
  const CString list = MakeFile(L"list.txt", "Foto\r\n..\\ute\r\nC:\\ute\r\nDok\\Brev\r\n");
  const Ran ran = RunVelmora({"project", "new", Argument(L"p"), "--folder-list", AsArgument(list)});
  EXPECT_TRUE(FileOrFolderExists(At(L"p\\Foto"))) << ran.err;
  EXPECT_TRUE(FileOrFolderExists(At(L"p\\Dok\\Brev")));
  EXPECT_FALSE(FileOrFolderExists(At(L"ute")));
  EXPECT_NE(ran.err.find("..\\ute"), std::string::npos) << ran.err;
  ExpectRefused(RunVelmora({"project", "new", Argument(L"q"), "--folder-list", Argument(L"none.txt")}),
                "none.txt");
}

TEST_F(EnvCommand, CheckNamesFileAndLine) {
  MakeFile(L"proj\\TUNDRIL.DBF\\TUNDRIL.VL", "*\r\n*\r\nroad.vl\r\n0 1\r\n0 1\r\n");
  MakeFile(L"proj\\TUNDRIL.PAR", "SKALA=100\r\nno separator\r\n");
  const Ran ran = RunVelmora({"project", "check", Argument(L"proj"), "--csv"});
  EXPECT_EQ(ran.status, 1);
  for (const char* line :
       {"TUNDRIL.RIT,,folder of the main program is missing", "TUNDRIL.PAR,2,\"is not \"\"key=value\"\"",
        "3,\"the alignment \"\"road.vl\"\" is missing"})
    EXPECT_NE(ran.out.find(line), std::string::npos) << line << "\n" << ran.out;
  MakeFile(L"proj\\TUNDRIL.DBF\\road.vl", "0 0 0 0\r\n");
  MakeFile(L"proj\\TUNDRIL.PAR", "SKALA=100\r\n");
  MakeFile(L"proj\\TUNDRIL.DBS", "");
  MakeFolders(L"proj\\TUNDRIL.RIT");
  EXPECT_EQ(RunVelmora({"project", "check", Argument(L"proj")}).out, "Nothing missing, nothing odd.\n");
  ExpectRefused(RunVelmora({"project", "check", Argument(L"nowhere")}), "no such folder");
}

TEST_F(EnvCommand, CheckNamesWhatFilesNameOutsideTheProject) {
  MakeFile(L"proj\\TUNDRIL.DBS", "");
  for (const wchar_t* folder : {L"proj\\TUNDRIL.RIT", L"proj\\TUNDRIL.DBF"}) MakeFolders(folder);
  MakeFile(L"road.vl", "0 0 0 0\r\n");
  const std::pair<const char*, const char*> kAlignments[] = {{"..\\..\\road.vl", "leads out of the project"},
                                                             {"C:\\road.vl", "leads out of the project"},
                                                             {"\\road.vl", "leads out of the project"},
                                                             {"road.vl:x", "leads out of the project"},
                                                             {"nul.txt", "has the name of a device"},
                                                             {"Com1", "has the name of a device"},
                                                             {"road.vl", "is missing"}};
  for (const auto& [name, text] : kAlignments) {
    MakeFile(L"proj\\TUNDRIL.DBF\\TUNDRIL.VL", std::string("x\r\n*\r\n*\r\n") + name + "\r\n0 1\r\n0 1\r\n");
    const Ran ran = RunVelmora({"project", "check", Argument(L"proj"), "--json"});
    const json rows = json::parse(ran.out);
    ASSERT_EQ(rows.size(), 1U) << name << ran.out;
    EXPECT_EQ(rows[0]["line"], 4) << name;
    EXPECT_NE(rows[0]["finding"].get<std::string>().find(text), std::string::npos) << name << ran.out;
  }
  MakeFile(L"proj\\TUNDRIL.DBF\\road.vl", "0 0 0 0\r\n");
  const CString list = MakeFile(L"list.txt", "Foto\r\n\r\n..\\ute\r\n\\Karta\r\nCON\r\nD:\\ute\r\n");
  const json rows = json::parse(
      RunVelmora({"project", "check", Argument(L"proj"), "--folder-list", AsArgument(list), "--json"}).out);
  ASSERT_EQ(rows.size(), 3U) << rows;
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(rows[i]["file"], AsArgument(list));
    EXPECT_EQ(rows[i]["line"], (std::array{3, 5, 6})[i]);
  }
  EXPECT_FALSE(FileOrFolderExists(At(L"proj\\Foto")));  // only looked at
}

TEST_F(EnvCommand, ListSortsBothWaysAndStatusFindsBothWays) {
  for (const wchar_t* name : {L"f\\10.DAT", L"f\\9.DAT", L"f\\b.DAT", L"f\\A.DAT"}) MakeFile(name, "");
  const auto names = [&](const std::vector<std::string>& more) {
    std::vector<std::string> arguments = {"project", "list", Argument(L"f\\*.DAT"), "--json"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    std::string all;
    for (const json& row : json::parse(RunVelmora(arguments).out))
      all += row["name"].get<std::string>() + " ";
    return all;
  };
  EXPECT_EQ(names({}), "9.DAT 10.DAT A.DAT b.DAT ");
  EXPECT_EQ(names({"--falling"}), "b.DAT A.DAT 10.DAT 9.DAT ");
  ExpectRefused(RunVelmora({"project", "list", Argument(L"f\\*.TXT")}), "nothing matches");
  // A folder alone: all in it, folders too, with the files' own sizes.
  MakeFile(L"f\\sub\\inner.dat", "");
  MakeFile(L"f\\three.txt", "abc");
  const std::string all = RunVelmora({"project", "list", Argument(L"f"), "--json"}).out;
  EXPECT_EQ(json::parse(all).size(), 6U) << all;
  EXPECT_EQ(RowOf(all, "name", "three.txt")["size"], 3);

  EXPECT_EQ(RunVelmora({"project", "status", "vilande", "--csv"}).out, "number,text\n4,Vilande\n");
  EXPECT_EQ(RunVelmora({"project", "status", "5", "--csv"}).out, "number,text\n5,Ska arkiveras\n");
  ExpectRefused(RunVelmora({"project", "status", "7"}), "is no project status");
  ExpectRefused(RunVelmora({"project", "status", "klart"}), "is no project status");
}

}  // namespace
}  // namespace velmora::testing
