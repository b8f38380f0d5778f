// The settings command on the sample installation: what it shows, and what it leaves on disk.
#include <algorithm>

#include "tests/cli/installed_command.h"
#include "velmora/platform/files.h"

namespace velmora::testing {
namespace {

class SettingsCommand : public SampleCommand {
 protected:
  CString Central(const CString& name) const { return At(kUser) + L"\\" + name; }
  CString Own(const CString& name) const { return At(L"proj\\" + name); }
  json Listed(const std::string& key, const std::string& file = "TUNDRIL.PAR") const {
    return RowOf(InProject({"settings", "list", "--json", "--file", file}).out, "key", key);
  }
};

json Row(const char* key, const char* value, const char* built_in, const char* note, const char* from) {
  return {{"key", key},
          {"value", value},
          {"default", built_in == nullptr ? json() : json(built_in)},
          {"note", note},
          {"from", from}};
}

TEST_F(SettingsCommand, AProjectsOwnCopyHidesTheInstallations) {
  EXPECT_EQ(Listed("LSKALA"), Row("LSKALA", "200", "100", "differs", "configuration folder"));
  EXPECT_EQ(Listed("TAUSTEG"), Row("TAUSTEG", "10", "10", "", "built in"));
  EXPECT_EQ(Listed("LINJEBREDD", "KARSK.PAR")["default"], "FÄRG");
  EXPECT_EQ(Listed("TRYCKSTEG", "JB23.PAR")["value"], "3");
  EXPECT_EQ(Listed("SPRAK", "TUNDRIL.CFG")["from"], "beside Velmora.ini");

  const std::vector<std::string> before = Lines(Central(L"TUNDRIL.PAR"));
  ASSERT_EQ(InProject({"settings", "local", "create"}).status, 0);
  EXPECT_EQ(Lines(Own(L"TUNDRIL.PAR")), before);
  EXPECT_EQ(InProject({"settings", "set", "lskala", "MAX"}).status, 0);
  EXPECT_EQ(InProject({"settings", "set", "ÅKERMARK", " På två ställen=ja"}).status, 0);
  EXPECT_EQ(InProject({"settings", "set", "FONT", ""}).status, 0);
  std::vector<std::string> after = before;
  std::replace(after.begin(), after.end(), std::string("LSKALA=200"), std::string("LSKALA=MAX"));
  after.erase(std::find(after.begin(), after.end(), "FONT=TEXT"));
  after.push_back("ÅKERMARK= På två ställen=ja");
  EXPECT_EQ(Lines(Own(L"TUNDRIL.PAR")), after);
  EXPECT_EQ(Lines(Central(L"TUNDRIL.PAR")), before);
  EXPECT_EQ(Listed("LSKALA"), Row("LSKALA", "MAX", "100", "differs", "project copy"));
  EXPECT_EQ(Listed("FONT"), Row("FONT", "TEXT", "TEXT", "", "built in"));
  EXPECT_EQ(InProject({"settings", "get", "åkermark"}).out, " På två ställen=ja\n");
  EXPECT_EQ(Listed("ÅKERMARK")["default"], json());
  const std::string table = InProject({"settings", "list", "--changed"}).out;
  EXPECT_NE(table.find("hides " + AsArgument(Central(L"TUNDRIL.PAR"))), std::string::npos) << table;
  EXPECT_NE(table.find("80 keys: 20 from the file, 60 built in; 8 differ from their default"),
            std::string::npos)
      << table;

  const Ran where = InProject({"settings", "where", "--file", "tundril.par", "--csv"});
  EXPECT_NE(where.out.find("in use,project copy," + Argument(L"proj")), std::string::npos) << where.out;
  EXPECT_NE(where.out.find("hidden,configuration folder"), std::string::npos) << where.out;
  EXPECT_NE(where.out.find("-,program folder"), std::string::npos) << where.out;

  const CString other = MakeFile(L"other\\TUNDRIL.PAR", "LSKALA=MAX\r\nHSKALA=50\r\nEGEN=1\r\n");
  const Ran diff = RunVelmora({"settings", "diff", AsArgument(other), Argument(L"proj"), "--json"});
  EXPECT_EQ(RowOf(diff.out, "key", "LSKALA"), json());
  EXPECT_EQ(RowOf(diff.out, "key", "TRSKALA"),
            json::parse(R"({"key":"TRSKALA","a":"14","a_from":"built in","b":"20","b_from":"file",
                            "default":"14"})"));
  EXPECT_EQ(RowOf(diff.out, "key", "EGEN"), json::parse(R"({"key":"EGEN","a":"1","a_from":"file","b":null,
                                                            "b_from":"-","default":null})"));
}

TEST_F(SettingsCommand, LocalCopiesAreAskedAboutAndTheInstallationIsLeftAlone) {
  MakeFile(L"proj\\LINKOD.PAR", "*\r\n");
  MakeFile(L"proj\\TUNDRIL.PAR", "HSKALA=1\r\n");
  RemoveWholeFile(Central(L"KODFIL.DAT"));
  const auto state = [&](const char* file) {
    return RowOf(InProject({"settings", "local", "status", "--json"}).out, "file", file)["state"];
  };
  EXPECT_EQ(state("LINKOD.PAR"), "project copy");
  EXPECT_EQ(state("MILJKOD.DAT"), "central");
  EXPECT_EQ(state("KODFIL.DAT"), "none");

  ExpectRefused(InProject({"settings", "local", "create", "--overwrite"}), "replace LINKOD.PAR? There is no");
  EXPECT_FALSE(FileOrFolderExists(Own(L"MILJKOD.DAT")));
  const Ran made = InProject({"settings", "local", "create", "--overwrite", "--yes", "--json"});
  EXPECT_EQ(RowOf(made.out, "file", "LINKOD.PAR")["done"], "replaced");
  EXPECT_EQ(RowOf(made.out, "file", "TUNDRIL.PAR")["done"], "kept");
  EXPECT_EQ(RowOf(made.out, "file", "KODFIL.DAT")["done"], "made empty");
  EXPECT_EQ(Lines(Own(L"LINKOD.PAR")), Lines(Central(L"LINKOD.PAR")));
  EXPECT_EQ(InProject({"settings", "local", "create", "--stones"}).status, 0);

  ExpectRefused(InProject({"settings", "local", "remove"}), "--yes says yes");
  EXPECT_EQ(InProject({"settings", "local", "remove", "--yes"}).status, 0);
  EXPECT_EQ(NamesIn(At(L"proj")), std::vector<CString>{L"KARSK.PAR"});
  ExpectRefused(InProject({"settings", "local", "remove", "--yes"}), "none of these files");
  for (const CString& folder : {At(kUser), At(L"inst\\Program")})
    for (const char* verb : {"create", "remove"})
      ExpectRefused(RunVelmora({"settings", "local", verb, "--yes", "--project", AsArgument(folder)}),
                    "the installation's own settings");
}

TEST_F(SettingsCommand, ARigsValuesLandOnTheirOwnLines) {
  // A placeholder and a short file would take the value on the line behind their last one.
  MakeFile(L"proj\\JB23.PAR", "*\r\n");
  EXPECT_EQ(InProject({"settings", "set", "--file", "JB23.PAR", "kraftsteg", "7.5"}).status, 0);
  EXPECT_EQ(Lines(Own(L"JB23.PAR")), (std::vector<std::string>{"100   50", "40   10", "30   7.5"}));
  MakeFile(L"proj\\JB23.PAR", "1 2\r\n3 4\r\n");
  EXPECT_EQ(InProject({"settings", "set", "--file", "jb23.par", "HASTSKALA", "9"}).status, 0);
  EXPECT_EQ(Lines(Own(L"JB23.PAR")), (std::vector<std::string>{"1 2", "9   4"}));
}

TEST_F(SettingsCommand, WhatWouldNotBeReadBackIsRefused) {
  const std::string settings = "HSKALA=1\r\n";
  const CString file = MakeFile(L"proj\\TUNDRIL.PAR", settings);
  const CString rig = MakeFile(L"proj\\JB23.PAR", "1 2\r\n");
  const struct {
    std::vector<std::string> arguments;
    const char* what;
  } kCases[] = {
      {{"A=B", "1"}, "no \"=\""},
      {{"", "1"}, "one character or more"},
      {{"A ", "1"}, "blanks at the ends"},
      {{"A\nB", "1"}, "no line ends"},
      {{"A", "1\r"}, "no line ends"},
      {{std::string(40, 'K'), "1"}, "has 40 characters; at most 39 are read"},
      {{"A", std::string(259, 'v')}, "has 259 characters; at most 258 are read"},
      {{"A", "\xE6\xB0\xB4"}, "lacks a character"},
      {{"--file", "JB23.PAR", "SJUNKSKALA", "1 2"}, "one word"},
      {{"--file", "JB23.PAR", "SJUNKSKALA", ""}, "one word"},
      {{"--file", "JB23.PAR", "TUNGSKALA", "1"}, "is not a key of JB23.PAR"},
  };
  for (const auto& tried : kCases) {
    std::vector<std::string> arguments = {"settings", "set"};
    arguments.insert(arguments.end(), tried.arguments.begin(), tried.arguments.end());
    SCOPED_TRACE(tried.what);
    ExpectRefused(InProject(arguments), tried.what);
  }
  EXPECT_EQ(ReadBytes(file), settings);
  EXPECT_EQ(ReadBytes(rig), "1 2\r\n");
  EXPECT_EQ(InProject({"settings", "set", std::string(39, 'K'), std::string(258, 'v')}).status, 0);
  EXPECT_EQ(InProject({"settings", "get", std::string(39, 'k')}).out, std::string(258, 'v') + "\n");
}

TEST_F(SettingsCommand, AWriteThatCannotBeIsToldAndNothingIsLost) {
  const std::string settings = "HSKALA=1\r\nen rad\r\n*\r\n";
  const CString file = MakeFile(L"proj\\TUNDRIL.PAR", settings);
  ExpectRefused(InProject({"settings", "set", "LSKALA", "5"}), "TUNDRIL.PAR:2: is not \"key=value\"");
  EXPECT_EQ(ReadBytes(file), settings);
  EXPECT_EQ(InProject({"settings", "set", "LSKALA", "5", "--force"}).status, 0);
  EXPECT_EQ(ReadBytes(file), "HSKALA=1\r\nLSKALA=5\r\n");
  SetWriteProtected(file, true);
  ExpectRefused(InProject({"settings", "set", "LSKALA", "6"}), "it is as it was");
  SetWriteProtected(file, false);
  EXPECT_EQ(ReadBytes(file), "HSKALA=1\r\nLSKALA=5\r\n");
  MakeFolders(L"proj\\KARSK.PAR");
  ExpectRefused(InProject({"settings", "list", "--file", "KARSK.PAR"}), "KARSK.PAR: is a folder");
  // A value without a file would live in memory only.
  RemoveWholeFile(Central(L"JB23.PAR"));
  ExpectRefused(InProject({"settings", "set", "--file", "JB23.PAR", "SJUNKSKALA", "1"}),
                "settings local create");
  EXPECT_FALSE(FileOrFolderExists(Central(L"JB23.PAR")));
}

}  // namespace
}  // namespace velmora::testing
