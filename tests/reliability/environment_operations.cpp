// The set-up, the user's files, and a project's folders.
#include <chrono>

#include "tests/reliability/operations.h"
#include "tests/reliability/tree.h"
#include "velmora/platform/process.h"

namespace velmora::testing {
namespace {

CString In(const wchar_t* folder, const wchar_t* name) { return CString(folder) + L"\\" + name; }

void SetAge(const Scene& s, const std::string& path, int hours) {
  std::filesystem::last_write_time(s.Root() / path,
                                   std::filesystem::file_time_type::clock::now() - std::chrono::hours(hours));
}

void PrepareUser(Scene& s) {
  s.RegisterDataFolders();
  s.ini.m_iniPath = s.MakeIni(kUser);
}

// Any of the files may not have been copied; without the ini file, which is the last one, there is no set-up.
std::vector<std::string> SetUpFailures() {
  const std::string kFolder = "user\\Quorval\\Zennik\\Velmora\\R20\\sv";
  const std::string kFormerFolder = "user\\Brovald\\Zennik\\Velmora\\R20\\sv";
  const auto not_copied = [&](const std::string& name) {
    return Box("Velmora", "Kunde inte kopiera filen:\n@\\" + kFormerFolder + "\\" + name + "\ntill:\n@\\" +
                              kFolder + "\\" + name);
  };
  const std::string none =
      Box("Velmora", "Fel! Hittar inte data för Velmora för aktuell användare. Starta upp via Lindqvar!");
  return {"-1",  // the registry cannot be read
          "-2" + none,
          "-6" + Box("Velmora", "Kunde inte skapa applikationens huvudkatalog:\n@\\user\\Quorval"),
          "-4" + Box("Velmora", "Kunde inte skapa lokala kataloger:\n@\\" + kFolder),
          "0" + not_copied("A.PAR"),
          "-2" + not_copied("Velmora.ini") + none,
          "-2" + not_copied("A.PAR") + not_copied("Velmora.ini") + none};
}

void PrepareUserFiles(Scene& s) {
  PrepareUser(s);
  for (const wchar_t* name : {L"MISSING.PAR", L"NEWER.DAT", L"OLDER.DAT", L"Velmora.ini"})
    s.MakeFile(In(kShared, name), "shared");
  for (const wchar_t* name : {L"NEWER.DAT", L"OLDER.DAT", L"OWN.TXT"}) s.MakeFile(In(kUser, name), "user");
  SetAge(s, "user/Quorval/Zennik/Velmora/R20/sv/NEWER.DAT", 9);
  SetAge(s, "all/Quorval/Zennik/Velmora/sv/OLDER.DAT", 9);
}

void PrepareOlderSettings(Scene& s) {
  PrepareUser(s);
  for (const wchar_t* name : {L"A.PAR", L"B.CFG", L"C.TXT"}) s.MakeFile(In(L"older", name), "older");
  s.MakeFile(In(kUser, L"B.CFG"), "user");
}

void PrepareFormerData(Scene& s) {
  s.RegisterDataFolders();
  // The system's folder for a user's data, where the registry names none.
  s.MakeFolders(L"xdg\\velmora\\appdata");
  s.Register(HKEY_LOCAL_MACHINE, kR20, L"InstallPath", s.At(L"prog"));
  s.MakeIni(kFormerUser, "DOCEXE=viewer\r\n");
  s.MakeFile(In(kFormerUser, L"A.PAR"), "former");
}

void PrepareFolderList(Scene& s) {
  PrepareUser(s);
  s.Register(HKEY_LOCAL_MACHINE, kR20, L"InstallPath", s.At(L"PROG"));
  s.MakeIni(kUser, "\r\n[ARKIV]\r\nMAPPAR=" + ToUtf8(s.MakeFile(L"list.txt", "LISTED\\BELOW\r\n")) + "\r\n");
}

int TakeOlderSettings(Scene& s) {
  CString folder = s.At(L"older");
  return s.ini.User2Cfg(folder);
}

int MakeProject(Scene& s) {
  SetApplicationProfile(s.At(L"app.ini"));
  SetCommandLine(L"\"" + s.At(L"PROG\\a.exe\" x"));
  return CProjPath().CreateProjectStructure(s.At(L"N\\P"), 1, 0, 1, 1, 1, 1, 1);
}

int CompleteProject(Scene& s) {
  return CProjPath().CreateProjectStructure(s.At(L"P"), nullptr, 0, 1, 1, 1, 1, 1, 1);
}

// A failure for each of the folders.
std::vector<std::string> NotMade(std::vector<std::string> others,
                                 std::initializer_list<const char*> folders) {
  for (const std::string folder : folders)
    others.push_back("0" + Box("Velmora", "Fel, kan EJ skapa katalog:\n@\\" + folder));
  return others;
}

}  // namespace

Operations EnvironmentOperations() {
  const auto no_file = [](const std::string& project) {
    return "0" + Box("Velmora", "Fel, kan EJ skapa fil:\n@\\" + project + "\\HARBEL.DBF\\Harbel.krd");
  };
  const auto check = [](Scene& s) { return s.ini.AllUserFileCheck(); };
  return {Silent("CheckUserFiles", PrepareUserFiles, check, "-1", true),
          {"TakeOlderSettings", PrepareOlderSettings, TakeOlderSettings, "1", {"0"}, true},
          {.name = "TakeOverFormerData",
           .prepare = PrepareFormerData,
           .run = [](Scene&) { return CTundrilIni().InitXPWay(20, L"sv", nullptr); },
           .done = "0",
           .failures = SetUpFailures(),
           .several = true,
           .registry = Registry::kRead,
           .settles = false},
          {"MakeAProject", PrepareFolderList, MakeProject, "1",
           NotMade({"0", "1", no_file("N\\P")}, {"N", "N\\P", "N\\P\\LISTED", "N\\P\\LISTED\\BELOW"}), true},
          {"CompleteAProject", Holding(L"P\\TUNDRIL.DBS", "database"), CompleteProject, "1",
           NotMade({no_file("P")},
                   {"P\\TUNDRIL.RIT", "P\\STACK", "P\\MIRSEN.DBF", "P\\DUNVEL.RIT", "P\\MIRSEN.RIT",
                    "P\\KARSK.DBF", "P\\KARSK.RIT", "P\\HARBEL.DBF", "P\\HARBEL.RIT"}),
           true}};
}

}  // namespace velmora::testing
