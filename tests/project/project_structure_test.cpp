#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/environment/installed.h"
#include "tests/support/print_text.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/test_files.h"
#include "velmora/common/format_buffer.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/platform/process.h"
#include "velmora/project/proj_path.h"

namespace velmora {
namespace {

using Names = std::vector<CString>;

// What is made, beside what for. The order of the arguments is that of CreateProjectStructure.
struct Wanted {
  int create = 1;
  int show = 1;
  int tundril = 0;
  int mirsen = 0;
  int karsk = 0;
  int harbel = 0;
  int list = 0;
};

int Create(const CString& path, const Wanted& wanted, CTundrilIni* ini = nullptr) {
  return CProjPath().CreateProjectStructure(path, ini, wanted.create, wanted.show, wanted.tundril,
                                            wanted.mirsen, wanted.karsk, wanted.harbel, wanted.list);
}

class ProjectStructure : public ::testing::Test {
 protected:
  ProjectStructure() { ini.m_useIniFile = 1; }

  // An ini file that names a folder list with these lines.
  CString ListFolders(const char* lines) {
    const CString list = folder.File(L"mappar.txt");
    WriteBytes(list, lines);
    ini.m_iniPath = folder.File(L"Velmora.ini");
    WriteBytes(ini.m_iniPath, "[ARKIV]\r\nMAPPAR=" + ToUtf8(list) + "\r\n");
    return list;
  }
  void MakeProject() { ASSERT_TRUE(MakeFolder(project)); }
  void ExpectOneBox(const CString& text, unsigned style = MB_OK | MB_ICONEXCLAMATION) {
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text, text);
    EXPECT_EQ(messages.boxes[0].style & ~MB_SETFOREGROUND, style);
    EXPECT_EQ(messages.boxes[0].caption, CString(L"Velmora"));
  }

  const TemporaryFolder folder;
  const CString project = folder.File(L"P");
  RecordedMessages messages;
  CTundrilIni ini;
};

TEST_F(ProjectStructure, EachProgramGetsItsFolders) {
  const struct {
    Wanted wanted;
    Names names;
  } kCases[] = {
      {{.show = 0}, {}},
      {{.tundril = 1}, {L"STACK", L"TUNDRIL.DBF", L"TUNDRIL.RIT"}},
      {{.mirsen = 1}, {L"DUNVEL.RIT", L"MIRSEN.DBF", L"MIRSEN.RIT"}},
      {{.karsk = 1}, {L"KARSK.DBF", L"KARSK.RIT", L"STACK"}},
      {{.harbel = 1}, {L"HARBEL.DBF", L"HARBEL.RIT"}},
      {{.tundril = 2, .karsk = -1}, {L"KARSK.DBF", L"KARSK.RIT", L"STACK", L"TUNDRIL.DBF", L"TUNDRIL.RIT"}},
  };
  int number = 0;
  for (const auto& c : kCases) {
    CString path;
    path.Format(L"%s\\år\\P %d", project, ++number);
    EXPECT_EQ(Create(path, c.wanted), 1);
    EXPECT_EQ(NamesIn(path), c.names);
  }
  EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(ProjectStructure, ADatabaseRefusesWithTheUnformattedText) {
  MakeProject();
  WriteBytes(project + L"\\TUNDRIL.DBS", "data");
  EXPECT_EQ(Create(project, {.show = 0, .tundril = 1}), 0);
  EXPECT_TRUE(messages.boxes.empty());
  EXPECT_EQ(Create(project, {.tundril = 1}), 0);
  ExpectOneBox(L"Velmora-databas finns redan i Katalog:\n%s");
  EXPECT_EQ(LastMessageText(), L"Velmora-databas finns redan i Katalog:\n" + project);
  EXPECT_EQ(NamesIn(project), Names{L"TUNDRIL.DBS"});
  // Only the main program's folders are kept away from a database, and only in a new project.
  EXPECT_EQ(Create(project, {.show = 0, .karsk = 1}), 1);
  EXPECT_EQ(Create(project, {.create = 0, .tundril = 1}), 1);
}

TEST_F(ProjectStructure, AnExistingFolderIsAskedFor) {
  MakeProject();
  for (const int answer : {IDNO, IDOK}) {
    messages.boxes.clear();
    messages.answer = answer;
    EXPECT_EQ(Create(project, {.mirsen = 1}), 0);
    ExpectOneBox(L"Katalog: " + project + L"\nfinns redan! Ska denna användas ändå?",
                 MB_YESNO | MB_DEFBUTTON2 | MB_ICONEXCLAMATION);
    EXPECT_EQ(NamesIn(project), Names{});
  }
  messages.answer = IDYES;
  ListFolders("Foto\r\n");
  EXPECT_EQ(Create(project, {.mirsen = 1}, &ini), 1);
  EXPECT_EQ(NamesIn(project), (Names{L"DUNVEL.RIT", L"Foto", L"MIRSEN.DBF", L"MIRSEN.RIT"}));
}

TEST_F(ProjectStructure, WithoutMessagesAFolderIsUsedSilently) {
  MakeProject();
  ListFolders("Foto\r\n");
  EXPECT_EQ(Create(project, {.show = 0, .tundril = 1}, &ini), 1);
  EXPECT_EQ(NamesIn(project), (Names{L"Foto", L"STACK", L"TUNDRIL.DBF", L"TUNDRIL.RIT"}));
  EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(ProjectStructure, ALevelThatCannotBeMadeIsAlwaysTold) {
  WriteBytes(project, "a file");
  EXPECT_EQ(Create(project + L"\\a\\b", {.show = 0, .tundril = 1}), 0);
  ExpectOneBox(L"Fel, kan EJ skapa katalog:\n" + project + L"\\a");
  EXPECT_EQ(ReadBytes(project), "a file");
}

TEST_F(ProjectStructure, AFailingSubFolderIsToldOnDemand) {
  EXPECT_EQ(Create(project, {.create = 0, .show = 0, .tundril = 1}), 0);
  EXPECT_TRUE(messages.boxes.empty());
  EXPECT_EQ(Create(project, {.create = 0, .tundril = 1}), 0);
  ExpectOneBox(L"Fel, kan EJ skapa katalog:\n" + project + L"\\TUNDRIL.DBF");
}

TEST_F(ProjectStructure, TheMarkerFileIsWrittenOnce) {
  const CString marker = project + L"\\HARBEL.DBF\\Harbel.krd";
  EXPECT_EQ(Create(project, {.harbel = 1}), 1);
  EXPECT_EQ(ReadBytes(marker), "***");
  WriteBytes(marker, "own");
  EXPECT_EQ(Create(project, {.create = 0, .harbel = 1}), 1);
  EXPECT_EQ(ReadBytes(marker), "own");
  EXPECT_EQ(NamesIn(project + L"\\HARBEL.DBF"), Names{L"Harbel.krd"});
}

TEST_F(ProjectStructure, AMarkerFileThatCannotBeMadeIsAlwaysTold) {
  MakeProject();
  WriteBytes(project + L"\\HARBEL.DBF", "in the way");
  EXPECT_EQ(Create(project, {.create = 0, .show = 0, .harbel = 1}), 0);
  ExpectOneBox(L"Fel, kan EJ skapa fil:\n" + project + L"\\HARBEL.DBF\\Harbel.krd");
}

TEST_F(ProjectStructure, FoldersAreNamedAsTheClassNamesThemNow) {
  const wchar_t* const name = std::exchange(CProjPath::StackKat, L"STAPEL");
  EXPECT_EQ(Create(project, {.karsk = 1}), 1);
  CProjPath::StackKat = name;
  EXPECT_EQ(NamesIn(project), (Names{L"KARSK.DBF", L"KARSK.RIT", L"STAPEL"}));
}

TEST_F(ProjectStructure, TheListsFoldersAreMade) {
  ListFolders("\\Foto\r\n\r\n\\\r\nRapporter\\2024\\Bilagor\n Inm\xe4tt \xe5r");
  EXPECT_EQ(Create(project, {}, &ini), 1);
  EXPECT_EQ(NamesIn(project + L"\\Rapporter\\2024"), Names{L"Bilagor"});
  EXPECT_TRUE(FileOrFolderExists(project + L"\\Foto"));
  EXPECT_EQ(NamesIn(project).size(), 3U);
  EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(ProjectStructure, TheListIsForNewProjectsAndOnDemand) {
  MakeProject();
  ListFolders("Foto\r\n");
  EXPECT_EQ(Create(project, {.create = 0}, &ini), 1);
  EXPECT_EQ(NamesIn(project), Names{});
  EXPECT_EQ(Create(project, {.create = 0, .list = 1}, &ini), 1);
  EXPECT_EQ(NamesIn(project), Names{L"Foto"});
}

TEST_F(ProjectStructure, LinesThatLeadOutOfTheProjectAreRefusedAndTheRestGoesOn) {
  const CString list = ListFolders("..\\ute\r\n\r\nC:\\ute\r\nFoto\r\n\\..\\ute\r\nnul\r\nKarta\r\n");
  EXPECT_EQ(Create(project, {.show = 0}, &ini), 1);
  EXPECT_EQ(NamesIn(project), (Names{L"Foto", L"Karta"}));
  EXPECT_EQ(NamesIn(folder.Path()).size(), 3U) << "the project, the list and the ini file";
  Names told;
  for (const MessageBoxCall& box : messages.boxes) told.push_back(box.text);
  const CString start = L"Otillåten katalog i listan " + list + L", rad ";
  EXPECT_EQ(told, (Names{start + L"1:\n..\\ute", start + L"3:\nC:\\ute", start + L"5:\n\\..\\ute",
                         start + L"6:\nnul"}));
}

TEST_F(ProjectStructure, AListedFolderThatCannotBeMadeEndsTheWork) {
  MakeProject();
  WriteBytes(project + L"\\file", "");
  ListFolders("Foto\r\nfile\\sub\\x\r\nKarta\r\n");
  EXPECT_EQ(Create(project, {.create = 0, .show = 0, .list = 1}, &ini), 0);
  ExpectOneBox(L"Fel, kan EJ skapa katalog:\n" + project + L"\\file\\sub");
  EXPECT_EQ(NamesIn(project), (Names{L"Foto", L"file"}));
}

TEST_F(ProjectStructure, WithoutAListTheProjectIsMadeAllTheSame) {
  EXPECT_EQ(Create(project, {}), 1);
  ini.m_iniPath = folder.File(L"Velmora.ini");
  for (const CString& value : {CString(), folder.File(L"missing.txt"), folder.Path(), CString(L"?:*")}) {
    WriteBytes(ini.m_iniPath, "[ARKIV]\r\nMAPPAR=" + ToUtf8(value) + "\r\n");
    EXPECT_EQ(Create(project, {.show = 0}, &ini), 1) << ToUtf8(value);
  }
  EXPECT_EQ(NamesIn(project), Names{});
  EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(ProjectStructure, TheShortFormNeedsNoIniFileWithoutList) {
  MakeProject();
  EXPECT_EQ(CProjPath().CreateProjectStructure(project, 0, 1, 1, 0, 0, 1, 0), 1);
  EXPECT_EQ(NamesIn(project),
            (Names{L"HARBEL.DBF", L"HARBEL.RIT", L"STACK", L"TUNDRIL.DBF", L"TUNDRIL.RIT"}));
}

using ShortForm = Installed;

// The program is not registered, so that its set-up does not succeed and its own ini file serves.
TEST_F(ShortForm, TakesTheListThatTheProgramsIniFileNames) {
  const CString list = MakeFile(L"mappar.txt", "Foto\r\n");
  MakeFile(L"bin\\Velmora.ini", "[ARKIV]\r\nMAPPAR=" + ToUtf8(list) + "\r\n");
  const CString project = At(L"P");
  for (const int create : {1, 0}) {
    SetCommandLine(At(L"bin\\a.exe"));
    SetApplicationProfile(L"before.ini");
    EXPECT_EQ(CProjPath().CreateProjectStructure(project, create, 1, 0, 0, 0, 0, 1 - create), 1);
    EXPECT_EQ(NamesIn(project), Names{L"Foto"});
    RemoveEmptyFolder(project + L"\\Foto");
  }
  EXPECT_TRUE(messages_.boxes.empty());
}

}  // namespace
}  // namespace velmora
