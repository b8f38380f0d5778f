#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/environment/installed.h"
#include "velmora/common/folder_levels.h"
#include "velmora/common/last_message.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/platform/process.h"
#include "velmora/project/folder_list.h"
#include "velmora/project/proj_path.h"

namespace velmora {
namespace {

using Texts = std::vector<CString>;

// What is made, beside what for. The order of the arguments is that of CreateProjectStructure.
struct Wanted {
  int create = 1, show = 1, tundril = 0, mirsen = 0, karsk = 0, harbel = 0, list = 0;
};

int Create(const CString& path, const Wanted& wanted, CTundrilIni* ini = nullptr) {
  return CProjPath().CreateProjectStructure(path, ini, wanted.create, wanted.show, wanted.tundril,
                                            wanted.mirsen, wanted.karsk, wanted.harbel, wanted.list);
}

class ProjectStructure : public Installed {
 protected:
  ProjectStructure() { ini.m_useIniFile = 1; }

  // An ini file that names a folder list with these lines.
  CString ListFolders(const std::string& lines) {
    const CString list = MakeFile(L"mappar.txt", lines);
    ini.m_iniPath = MakeFile(L"bin\\Velmora.ini", "[ARKIV]\r\nMAPPAR=" + ToUtf8(list) + "\r\n");
    return list;
  }
  // The texts of the boxes since the last call.
  Texts Told() {
    Texts texts;
    for (const MessageBoxCall& box : std::exchange(messages_.boxes, {})) texts.push_back(box.text);
    return texts;
  }

  const CString project = At(L"P");
  CTundrilIni ini;
};

TEST_F(ProjectStructure, ADatabaseRefusesWithTheUnformattedText) {
  MakeFile(L"P\\TUNDRIL.DBS", "data");
  EXPECT_EQ(Create(project, {.show = 0, .tundril = 1}), 0);
  EXPECT_EQ(Told(), Texts{});
  EXPECT_EQ(Create(project, {.tundril = 1}), 0);
  EXPECT_EQ(Told(), Texts{L"Velmora-databas finns redan i Katalog:\n%s"});
  EXPECT_EQ(LastMessageText(), L"Velmora-databas finns redan i Katalog:\n" + project);
  EXPECT_EQ(NamesIn(project), Texts{L"TUNDRIL.DBS"});
  // Only the main program's folders are kept away from a database, and only in a new project.
  EXPECT_EQ(Create(project, {.show = 0, .karsk = 1}), 1);
  EXPECT_EQ(Create(project, {.create = 0, .tundril = 1}), 1);
}

TEST_F(ProjectStructure, AnExistingFolderIsAskedForUnlessSilent) {
  MakeFolders(L"P");
  EXPECT_EQ(Create(project, {.mirsen = 1}), 0);
  ASSERT_EQ(messages_.boxes.size(), 1U);
  EXPECT_EQ(messages_.boxes[0].style & ~MB_SETFOREGROUND, MB_YESNO | MB_DEFBUTTON2 | MB_ICONEXCLAMATION);
  EXPECT_EQ(Told(), Texts{L"Katalog: " + project + L"\nfinns redan! Ska denna användas ändå?"});
  EXPECT_EQ(NamesIn(project), Texts{});
  messages_.answer = IDYES;
  EXPECT_EQ(Create(project, {.karsk = 1}), 1);
  EXPECT_EQ(Told().size(), 1U);
  EXPECT_EQ(Create(project, {.show = 0, .harbel = 1}), 1);
  EXPECT_EQ(NamesIn(project).size(), 5U);
  EXPECT_EQ(Told(), Texts{});
}

TEST_F(ProjectStructure, WhatCannotBeMadeIsToldSubFoldersOnDemandOnly) {
  const CString file = MakeFile(L"P", "a file");
  EXPECT_EQ(Create(file, {.create = 0, .show = 0, .tundril = 1}), 0);
  EXPECT_EQ(Told(), Texts{});
  EXPECT_EQ(Create(file + L"\\a\\b", {.show = 0, .tundril = 1}), 0);
  EXPECT_EQ(Told(), Texts{L"Fel, kan EJ skapa katalog:\n" + file + L"\\a"});
}

TEST_F(ProjectStructure, FoldersHaveTheNamesTheClassHasNowAndTheMarkerFileIsWrittenOnce) {
  const wchar_t* const name = std::exchange(CProjPath::StackKat, L"STAPEL");
  EXPECT_EQ(Create(project, {.karsk = -1, .harbel = 2}), 1);
  CProjPath::StackKat = name;
  EXPECT_EQ(NamesIn(project), (Texts{L"HARBEL.DBF", L"HARBEL.RIT", L"KARSK.DBF", L"KARSK.RIT", L"STAPEL"}));
  EXPECT_EQ(ReadBytes(project + L"\\HARBEL.DBF\\Harbel.krd"), "***");
  const CString own = MakeFile(L"P\\HARBEL.DBF\\Harbel.krd", "own");
  EXPECT_EQ(Create(project, {.create = 0, .harbel = 1}), 1);
  EXPECT_EQ(ReadBytes(own), "own");
}

TEST_F(ProjectStructure, TheListIsForNewProjectsAndOnDemand) {
  ListFolders("\\Foto\r\n\r\n\\\r\nRapporter\\2024\\Bilagor\n Inm\xe4tt \xe5r");
  EXPECT_EQ(Create(project, {}, &ini), 1);
  EXPECT_EQ(NamesIn(project), (Texts{L" Inmätt år", L"Foto", L"Rapporter"}));
  EXPECT_EQ(NamesIn(project + L"\\Rapporter\\2024"), Texts{L"Bilagor"});
  const CString other = MakeFolders(L"other");
  EXPECT_EQ(Create(other, {.create = 0}, &ini), 1);
  EXPECT_EQ(NamesIn(other), Texts{});
  EXPECT_EQ(Create(other, {.create = 0, .list = 1}, &ini), 1);
  EXPECT_EQ(NamesIn(other), NamesIn(project));
}

// Texts read from a file: whatever they are, nothing outside the project is created.
TEST_F(ProjectStructure, AListedFolderThatLeadsOutIsPassedOver) {
  const std::string kRefused[] = {"..\\ute",
                                  "..\\..\\ute",
                                  "\\..\\ute",
                                  "Foto\\.. \\..\\ute",
                                  "a/../../ute",
                                  "C:\\velmora-ute",
                                  "C:velmora-ute",
                                  "\\\\?\\C:\\velmora-ute",
                                  "Foto:gömd",
                                  "CON",
                                  "nul.txt",
                                  "Foto\\COM1",
                                  "LPT9.dat",
                                  "aux ",
                                  "prn.",
                                  "\\\\.\\COM1",
                                  std::string("a\0\\..\\..\\ute", 12),
                                  std::string(300, 'x'),
                                  std::string(70'000, 'x')};
  MakeFolders(L"P");
  std::string lines;
  for (const std::string& name : kRefused) lines += name + "\r\n";
  // The last three are joined to the project's path.
  const CString list = ListFolders(lines + "Karta\r\n\\velmora-ute\r\n\\\\server\\share\\ute\r\nFoto.");
  const Texts around = NamesIn(folder_.Path());
  EXPECT_EQ(Create(project, {.create = 0, .list = 1}, &ini), 1);
  EXPECT_EQ(NamesIn(folder_.Path()), around);
  EXPECT_EQ(NamesIn(project).size(), 4U);
  for (const wchar_t* path : {L"C:\\velmora-ute", L"\\velmora-ute", L"C:velmora-ute"})
    EXPECT_FALSE(FileOrFolderExists(path)) << ToUtf8(path);
  const Texts told = Told();
  ASSERT_EQ(told.size(), std::size(kRefused));
  for (size_t i = 0; i < told.size(); ++i) {
    CString refused;
    refused.Format(L"Otillåten katalog i listan %s, rad %d:\n", list.GetString(), static_cast<int>(i + 1));
    EXPECT_EQ(told[i].Left(refused.GetLength()), refused);
    EXPECT_LT(told[i].GetLength(), list.GetLength() + 350);
  }
}

TEST_F(ProjectStructure, AFileThatIsNoFolderListIsReadToALimit) {
  const auto told = [this](const std::string& first, int count, const std::string& last) {
    std::string lines;
    while (count-- > 0) lines += first;
    const CString list = ListFolders(lines + last);
    EXPECT_EQ(Create(project, {.create = 0, .list = 1}, &ini), 1);
    Texts texts = Told();
    for (CString& text : texts)
      text = text.Mid(CString(L"Otillåten katalog i listan , rad ").GetLength() + list.GetLength());
    return texts;
  };
  MakeFolders(L"P");
  EXPECT_EQ(told("Foto\n\n", kMostListedFolders, "Karta\nRit\n"), Texts{L"8193:\nKarta"});
  const Texts refused = told("..\n", 70, "Karta\n");
  EXPECT_EQ(refused.size(), 65U);
  EXPECT_EQ(refused.back().Right(5), L" 6 st");
  EXPECT_EQ(told("Rit\n", 1, std::string(5'000'000, 'x') + "\nKarta\n"), Texts{L"2:\n"});
  EXPECT_EQ(NamesIn(project), (Texts{L"Foto", L"Karta", L"Rit"}));
}

TEST_F(ProjectStructure, WithoutAListTheProjectIsMadeAllTheSame) {
  for (const CString& value : {CString(), At(L"missing.txt"), folder_.Path(), CString(L"?:*")}) {
    ini.m_iniPath = MakeFile(L"Velmora.ini", "[ARKIV]\r\nMAPPAR=" + ToUtf8(value) + "\r\n");
    EXPECT_EQ(Create(project, {.show = 0}, &ini), 1) << ToUtf8(value);
    EXPECT_EQ(NamesIn(project), Texts{});
  }
  EXPECT_EQ(Told(), Texts{});
}

// The program is not registered, so that its set-up does not succeed and its own ini file serves.
TEST_F(ProjectStructure, TheShortFormTakesTheListThatTheProgramsIniFileNames) {
  ListFolders("Foto\r\n");
  SetCommandLine(At(L"bin\\a.exe"));
  SetApplicationProfile(L"before.ini");
  EXPECT_EQ(CProjPath().CreateProjectStructure(project, 0, 1, 0, 0, 0, 0, 1), 1);
  EXPECT_EQ(NamesIn(project), Texts{L"Foto"});
  EXPECT_EQ(CProjPath().CreateProjectStructure(project, 0, 1, 0, 0, 1, 0, 0), 1);
  EXPECT_EQ(NamesIn(project), (Texts{L"Foto", L"KARSK.DBF", L"KARSK.RIT", L"STACK"}));
}

TEST(ProjPath, FieldsAreComposedFromTheFolderAsGiven) {
  CProjPath paths;
  for (const CString& folder :
       {CString(L"C:\\Väg 40"), CString(L"C:\\Path\\"), CString(), CString(L"%s%d")}) {
    EXPECT_EQ(paths.SetPath(folder), 0);
    EXPECT_EQ(paths.SetPath(paths.m_ProjKat), 0);  // its own field as the argument
    EXPECT_EQ(paths.m_ProjKat, folder);
    EXPECT_EQ(paths.m_StenParPath, folder + L"\\KARSK.PAR");
    EXPECT_EQ(paths.m_AvpPath, folder + L"\\TUNDRIL.DBF\\TUNDRIL.AVP");
  }
}

TEST(ProjPath, NamesAreReadWhenPathsAreComposed) {
  const wchar_t* const before = std::exchange(CProjPath::TundrilDbfKat, L"ANNAN.DBF");
  CProjPath paths;
  paths.SetPath(L"C:\\A");
  CProjPath::TundrilDbfKat = before;
  EXPECT_EQ(paths.m_VlPath, L"C:\\A\\ANNAN.DBF\\TUNDRIL.VL");
}

}  // namespace
}  // namespace velmora
