// What `velmora project check` says of entries that only a system of this kind can have.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/cli/installed_command.h"

namespace velmora::testing {
namespace {

using CheckEntries = InstalledCommand;

TEST_F(CheckEntries, LinksThatLeadOutAndNamesThatWindowsLacks) {
  for (const wchar_t* name :
       {L"p\\TUNDRIL.DBS", L"p\\Foto\\Lpt9.dat", L"p\\Foto\\a:b", L"p\\slut.", L"out\\x"})
    MakeFile(name, "");
  for (const wchar_t* name : {L"p\\TUNDRIL.DBF", L"p\\TUNDRIL.RIT"}) MakeFolders(name);
  const auto link = [this](const char* to, const wchar_t* at) {
    ASSERT_EQ(symlink(to, Argument(at).c_str()), 0);
  };
  link("../../out", L"p\\Foto\\ut");
  link("../out/x", L"p\\road.vl");
  link("borta", L"p\\död");
  link("Foto", L"p\\inne");
  link("..", L"p\\Foto\\runt");
  ASSERT_EQ(mkfifo(Argument(L"p\\rör").c_str(), 0600), 0);
  const Ran ran = RunVelmora({"project", "check", Argument(L"p"), "--json"});
  EXPECT_EQ(ran.status, 1);
  std::map<std::string, std::string> found;
  for (const json& row : json::parse(ran.out)) found[row["file"]] = row["finding"];
  const std::pair<const char*, const char*> kWanted[] = {{"Foto/Lpt9.dat", "is the name of a device"},
                                                         {"Foto/a:b", "is no name that a file can have"},
                                                         {"slut.", "is no name that a file can have"},
                                                         {"Foto/ut", "leads out of the project, to"},
                                                         {"road.vl", "leads out of the project, to"},
                                                         {"död", "leads nowhere"},
                                                         {"rör", "is a pipe"}};
  for (const auto& [file, text] : kWanted)
    EXPECT_NE(found[file].find(text), std::string::npos) << file << ": " << found[file];
  EXPECT_EQ(found.size(), std::size(kWanted)) << ran.out;
}

}  // namespace
}  // namespace velmora::testing
