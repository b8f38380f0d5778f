// The codes command: every entry of a file comes through a rewrite, and what would not is said.
#include <algorithm>

#include "tests/cli/installed_command.h"
#include "velmora/platform/files.h"

namespace velmora::testing {
namespace {

class CodesCommand : public SampleCommand {
 protected:
  CString Own(const CString& name) const { return At(L"proj\\" + name); }
  // A verb of codes for the project.
  Ran Codes(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "codes");
    return InProject(arguments);
  }
};

// Each line but the ones changed is as the sample file has it.
TEST_F(CodesCommand, ARewriteKeepsEveryEntry) {
  ASSERT_EQ(InProject({"settings", "local", "create"}).status, 0);
  const struct {
    const wchar_t* file;
    std::vector<std::vector<std::string>> commands;
    std::vector<std::pair<std::string, std::string>> changes;  // of lines; from empty: added before the end
  } kFiles[] = {
      {L"KODFIL.DAT",
       {{"objects", "set", "TRÄ", "Träd, fristående"},
        {"objects", "remove", "BEL"},
        {"objects", "add", "ÖVR", "Övrigt"}},
       {{"TRÄ Träd", "TRÄ Träd, fristående"}, {"BEL Belysningsstolpe", ""}, {"", "ÖVR Övrigt"}}},
      {L"MILJKOD.DAT",
       {{"environment", "set", "FK", "--max", "9"},
        {"environment", "set", "KOLV", "Kolvprov"},
        {"environment", "remove", "LAB"},
        {"environment", "add", "RÖR", "Grundvattenrör", "--section", "classes"}},
       {{"FK Föroreningsklass max=6 steg=1", "FK Föroreningsklass max=9 steg=1"},
        {"KOLV Kolvprovtagning", "KOLV Kolvprov"},
        {"LAB Laboratorieanalys", ""},
        {"", "RÖR Grundvattenrör max=100 steg=20"}}},
      {L"LINKOD.PAR",
       {{"lines", "set", "GVY", "--value", "4"},
        {"lines", "set", "PV10", "--number", "0.30"},
        {"lines", "remove", "TORV"},
        {"lines", "add", "VÄG", "--word", "PUNKTAD", "--number", "1", "--text", "300 mm överbyggnad"}},
       {{"GVY STRECKPUNKT 0.25                             Grundvattenyta",
         "GVY STRECKPUNKT 0.25 4                           Grundvattenyta"},
        {"PV10 HELDRAGEN 0.25 1                            Provvärde, översta nivån",
         "PV10 HELDRAGEN 0.30 1                            Provvärde, översta nivån"},
        {"TORV PUNKTAD 0.25                                Underkant torv eller gyttja", ""},
        // Without its 0 the description's number would be read as the value.
        {"", "VÄG PUNKTAD 1 0                                  300 mm överbyggnad"}}}};
  for (const auto& file : kFiles) {
    std::vector<std::string> expected = Lines(Own(file.file));
    for (const auto& [from, to] : file.changes) {
      const auto at = std::find(expected.begin(), expected.end(), from);
      if (from.empty()) {
        expected.insert(expected.end() - 1, to);
      } else {
        ASSERT_NE(at, expected.end()) << from;
        if (to.empty())
          expected.erase(at);
        else
          *at = to;
      }
    }
    for (const auto& command : file.commands) {
      const Ran ran = Codes(command);
      EXPECT_EQ(ran.status, 0) << command[2] << ran.err;
    }
    EXPECT_EQ(Lines(Own(file.file)), expected);
  }
  EXPECT_EQ(RowOf(Codes({"lines", "list", "--json"}).out, "code", "GVY")["value"], 4);
  EXPECT_EQ(RowOf(Codes({"objects", "list", "--json"}).out, "code", "TRÄ")["note"],
            "only the first word of the text is read: \"Träd,\"");
  EXPECT_EQ(RowOf(Codes({"environment", "list", "--json"}).out, "code", "KM")["section"], "classes");
}

TEST_F(CodesCommand, ARewriteThatWouldLoseSomethingIsRefused) {
  const struct {
    const wchar_t* file;
    const char* content;
    std::vector<std::string> command;
    const char* what;
    const char* forced;  // the content then; null: refused all the same
  } kCases[] = {
      {L"MILJKOD.DAT",
       "Egna koder\r\n*\r\n*\r\nX metod\r\n",
       {"environment", "update"},
       ":1: is in the header",
       "*\r\n*\r\nX metod\r\n*\r\nTOLK Tolkad klassificering\r\n*\r\n"
       "FK F\xF6roreningsklass max=6 steg=1\r\n*\r\n"},
      {L"MILJKOD.DAT",
       "*\r\n*\r\n*\r\n*\r\n*\r\nA fyra\r\n",
       {"environment", "add", "B", "b", "--section", "methods"},
       ":6: is in section 4",
       "*\r\n*\r\nB b\r\n*\r\n*\r\n*\r\n"},
      // A class without a text would get its settings as one.
      {L"MILJKOD.DAT",
       "*\r\n*\r\n*\r\n*\r\nK1\r\n*\r\n",
       {"environment", "add", "A", "a", "--section", "methods"},
       ":5: would be read differently",
       "*\r\n*\r\nA a\r\n*\r\n*\r\nK1  max=100 steg=20\r\n*\r\n"},
      {L"LINKOD.PAR",
       "A b 1 2 till\r\n*\r\n",
       {"lines", "set", "A", "--text", "c"},
       ":1: is not read, as it is before",
       "A b 1 2                                          c\r\n*\r\n"},
      {L"LINKOD.PAR",
       "A b 1\r\n*\r\nC d 2\r\n",
       {"lines", "set", "A", "--word", "c"},
       ":3: follows the line",
       "A c 1                                            \r\n*\r\n"},
      {L"KODFIL.DAT", "A a\r\nB b\r\n", {"objects", "add", "C", "c"}, "has no line \"*\"", nullptr},
  };
  for (const auto& tried : kCases) {
    SCOPED_TRACE(tried.what);
    const CString file = MakeFile(CString(L"proj\\") + tried.file, tried.content);
    ExpectRefused(Codes(tried.command), tried.what);
    EXPECT_EQ(ReadBytes(file), tried.content);
    std::vector<std::string> forced = tried.command;
    forced.push_back("--force");
    EXPECT_EQ(Codes(forced).status, tried.forced == nullptr ? 1 : 0);
    EXPECT_EQ(ReadBytes(file), tried.forced == nullptr ? tried.content : tried.forced);
  }
}

TEST_F(CodesCommand, WhatWouldNotBeReadBackIsRefused) {
  ASSERT_EQ(InProject({"settings", "local", "create"}).status, 0);
  const std::string before =
      ReadBytes(Own(L"KODFIL.DAT")) + ReadBytes(Own(L"MILJKOD.DAT")) + ReadBytes(Own(L"LINKOD.PAR"));
  const struct {
    std::vector<std::string> command;
    const char* what;
  } kCases[] = {
      {{"objects", "add", "A B", "c"}, "one word"},
      {{"objects", "add", "*A", "c"}, "must not begin with"},
      {{"objects", "add", "A", " "}, "without a text"},
      {{"objects", "add", "A", "b\nc"}, "no line ends"},
      {{"objects", "add", "A", "\xE6\xB0\xB4"}, "lacks a character"},
      {{"objects", "add", "VÄK", "igen"}, ":19: has the code \"VÄK\" already"},
      {{"environment", "add", "ABCDE", "a", "--section", "methods"}, "at most 4"},
      {{"environment", "set", "FK", "--step", "0"}, "would not be read back"},
      {{"environment", "set", "FK", "--max", "1x"}, "would not be read back"},
      {{"environment", "set", "FK", "Klass max=3"}, "would not be read back"},
      {{"environment", "set", "X", "--max", "3"}, "only classes"},
      {{"environment", "set", "SAKN", "text"}, "has no code \"SAKN\""},
      {{"lines", "set", "GVY", "--number", "1,5"}, "\"1,5\" is not a number"},
      {{"lines", "set", "GVY", "--value", "1.5"}, "not a whole number"},
      {{"lines", "set", "GVY", "--word", std::string(45, 'o')}, "begins in column 50"},
  };
  for (const auto& tried : kCases) {
    SCOPED_TRACE(tried.what);
    ExpectRefused(Codes(tried.command), tried.what);
  }
  EXPECT_EQ(ReadBytes(Own(L"KODFIL.DAT")) + ReadBytes(Own(L"MILJKOD.DAT")) + ReadBytes(Own(L"LINKOD.PAR")),
            before);
}

TEST_F(CodesCommand, AStampFileIsMadeAndItsFieldsChange) {
  const std::string file = Argument(L"stamp.dat");
  const auto set = [&](std::vector<std::string> field) {
    field.insert(field.begin(), {"codes", "stamp", file, "set"});
    return RunVelmora(field);
  };
  EXPECT_EQ(set({"DATUM", "IDAG", "10", "20"}).status, 0);
  EXPECT_EQ(set({"RITARE", "Ö.Ek", "1.50", "-2", "2.5"}).status, 0);
  EXPECT_EQ(set({"DATUM", "IGÅR", "10.0", "20"}).status, 0);
  EXPECT_EQ(ReadBytes(At(L"stamp.dat")), "DATUM IG\xC5R 10.0 20 3\r\nRITARE \xD6.Ek 1.50 -2 2.5\r\n");
  ExpectRefused(set({"RAD1", "två ord", "1", "2"}), "one word");
  ExpectRefused(set({"RAD1", "ord", "1", "x"}), "\"x\" is not a number");
  const Ran list = RunVelmora({"codes", "stamp", file, "list", "--csv"});
  EXPECT_EQ(list.out,
            "line,field,word,first,second,third,note\n1,DATUM,IGÅR,10.0,20,3,\n2,RITARE,Ö.Ek,1.50,-2,2.5,\n");
}

TEST_F(CodesCommand, CheckSaysWhichLinesAreNotReadAndWhy) {
  const struct {
    const wchar_t* file;
    std::string content;
    std::vector<std::string> findings;  // the start of each, "line,what"
  } kCases[] = {
      {L"TUNDRIL.PAR",
       "A=1\r\n\r\n*\r\n=2\r\nB =3\r\na=4\r\n" + std::string(40, 'K') + "=1\r\nV=" + std::string(259, 'v') +
           "\r\n",
       {"4,\"is not", "5,\"the blanks", "6,\"is skipped: the key", "7,is skipped: its key",
        "8,is skipped: its value"}},
      {L"JB23.PAR",
       "1 2\r\n3\r\n4 x\r\n5 6 7\r\n\r\n1 2\r\n1 2\r\n1 2\r\n1 2\r\n1 2\r\n1 2\r\n12 12\r\n",
       {"2,\"has no HASTSTEG", "3,\"KRAFTSTEG is not", "4,\"only two", "5,\"has no SPOLSKALA", "12,is line"}},
      {L"KODFIL.DAT",
       "huvud utan kod\r\n*\r\nA\r\nB tv\xE5 ord\r\nC c\r\n*\r\n",
       {"3,\"is skipped", "4,\"only the first word of the text is read: \"\"två"}},
      {L"MILJKOD.DAT",
       "*\r\n*\r\nABCDE lång\r\n*\r\n*\r\nA Klass steg=3 max=5\r\nB max=200000 steg=0\r\nC Klass "
       "max=5\r\n*\r\n",
       {"3,\"is skipped", "6,max=5 is read as 100", "7,max=200000 is", "7,steg=0 is read as 20"}},
      {L"LINKOD.PAR",
       "A b\r\nC d 1 2 mer\r\nE " + std::string(50, 'f') + " 1\r\n*\r\nG h 1\r\n",
       {"1,\"is skipped", "2,\"is not read", "3,\"its fields", "5,\"follows"}},
      {L"STAMP.DAT", "A b 1\r\nC d 1 2 x\r\nE f 1 2 3\r\n*\r\n", {"1,\"is skipped", "2,\"is not read"}},
  };
  for (const auto& checked : kCases) {
    const CString path = MakeFile(CString(L"proj\\") + checked.file, checked.content);
    const Ran ran = RunVelmora({"codes", "check", AsArgument(path), "--csv"});
    EXPECT_EQ(ran.status, 1);
    std::vector<std::string> rows;
    for (size_t at = 0, end; (end = ran.out.find('\n', at)) != std::string::npos; at = end + 1)
      rows.push_back(ran.out.substr(at, end - at));
    ASSERT_EQ(rows.size(), checked.findings.size() + 1) << ran.out << ran.err;
    for (size_t i = 0; i < checked.findings.size(); ++i)
      EXPECT_EQ(rows[i + 1].substr(0, checked.findings[i].size()), checked.findings[i]);
  }
  // The same, for all of a project's files.
  const std::string project = RunVelmora({"project", "check", Argument(L"proj"), "--csv"}).out;
  for (const char* row :
       {"\nTUNDRIL.PAR,4,", "\nJB23.PAR,12,", "\nKODFIL.DAT,3,", "\nMILJKOD.DAT,7,", "\nLINKOD.PAR,5,"})
    EXPECT_NE(project.find(row), std::string::npos) << row << project;
  MakeFile(L"proj\\TUNDRIL.PAR", std::string("A=1\0x\r\n", 7));
  EXPECT_EQ(RunVelmora({"codes", "check", Argument(L"proj\\TUNDRIL.PAR"), "--csv"}).out,
            "line,finding\n1,\"holds a zero byte, and what follows it is not read\"\n");
  EXPECT_EQ(RunVelmora({"codes", "check", Argument(L"proj\\TUNDRIL.PAR"), "--kind", "objects"}).status, 1);
  // What a project's copies are made with where the installation has none, and every sample, is in order.
  MakeFile(L"proj\\JB23.PAR", "*\r\n");
  EXPECT_EQ(RunVelmora({"codes", "check", Argument(L"proj\\JB23.PAR")}).status, 0);
  for (const wchar_t* name : {L"JB23.PAR", L"KARSK.PAR", L"KODFIL.DAT", L"LINKOD.PAR", L"MILJKOD.DAT",
                              L"STAMPEL1.DAT", L"TUNDRIL.CFG", L"TUNDRIL.PAR"})
    EXPECT_EQ(RunVelmora({"codes", "check", AsArgument(At(kUser) + L"\\" + name)}).status, 0) << ToUtf8(name);
}

}  // namespace
}  // namespace velmora::testing
