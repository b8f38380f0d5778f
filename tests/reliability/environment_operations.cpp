// The set-up, the user's files, and a project's folders.
#include <chrono>

#include "tests/reliability/operations.h"
#include "tests/reliability/tree.h"
#include "velmora/platform/process.h"

namespace velmora::testing {
namespace {

constexpr wchar_t kSharedFiles[] = L"all\\Quorval\\Zennik\\Velmora\\sv";

CString In(const wchar_t* folder, const wchar_t* name) { return CString(folder) + L"\\" + name; }

void SetAge(const Scene& s, const std::string& path, int hours) {
  std::filesystem::last_write_time(s.Root() / path,
                                   std::filesystem::file_time_type::clock::now() - std::chrono::hours(hours));
}

void PrepareUser(Scene& s) {
  s.RegisterDataFolders();
  s.ini.m_iniPath = s.MakeIni(kUser);
}

std::string NotMade(const std::string& result, const std::string& folder) {
  return result + Box("Velmora", "Fel, kan EJ skapa katalog:\n@\\" + folder);
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

}  // namespace

void AddEnvironmentOperations(std::vector<Operation>* operations) {
  const auto add = [&](Operation operation) { operations->push_back(std::move(operation)); };
  add({.name = "CheckUserFiles",
       .covers = "CTundrilIni::AllUserFileCheck",
       .prepare =
           [](Scene& s) {
             PrepareUser(s);
             for (const wchar_t* name : {L"MISSING.PAR", L"NEWER.DAT", L"OLDER.DAT", L"Velmora.ini"})
               s.MakeFile(In(kSharedFiles, name), "shared");
             for (const wchar_t* name : {L"NEWER.DAT", L"OLDER.DAT", L"OWN.TXT"})
               s.MakeFile(In(kUser, name), "user");
             SetAge(s, "user/Quorval/Zennik/Velmora/R20/sv/NEWER.DAT", 9);
             SetAge(s, "all/Quorval/Zennik/Velmora/sv/OLDER.DAT", 9);
           },
       .run = [](Scene& s) { return std::to_string(s.ini.AllUserFileCheck()); },
       .done = "-1",
       .failures = {"-1"},
       .several = true});
  add({.name = "TakeOlderSettings",
       .covers = "CTundrilIni::User2Cfg",
       .prepare =
           [](Scene& s) {
             PrepareUser(s);
             for (const wchar_t* name : {L"A.PAR", L"B.CFG", L"C.TXT"})
               s.MakeFile(In(L"older", name), "older");
             s.MakeFile(In(kUser, L"B.CFG"), "user");
           },
       .run =
           [](Scene& s) {
             CString folder = s.At(L"older");
             return std::to_string(s.ini.User2Cfg(folder));
           },
       .failures = {"0"},
       .several = true});
  add({.name = "TakeOverFormerData",
       .covers = "CTundrilIni::InitXPWay",
       .prepare =
           [](Scene& s) {
             s.RegisterDataFolders();
             s.MakeFolders(L"xdg\\velmora\\appdata");  // the system's folder for a user's data, where the
                                                       // registry names none
             s.Register(HKEY_LOCAL_MACHINE, kR20, L"InstallPath", s.At(L"prog"));
             s.MakeIni(kFormerUser, "DOCEXE=viewer\r\n");
             s.MakeFile(In(kFormerUser, L"A.PAR"), "former");
           },
       .run =
           [](Scene&) {
             CTundrilIni ini;
             const int result = ini.InitXPWay(20, L"sv", nullptr);
             return std::to_string(result);
           },
       .done = "0",
       .failures = SetUpFailures(),
       .several = true,
       .registry = Registry::kRead,
       .settles = false});

  std::vector<std::string> failures = {
      "0", "1", "0" + Box("Velmora", "Fel, kan EJ skapa fil:\n@\\N\\P\\HARBEL.DBF\\Harbel.krd")};
  for (const char* folder : {"N", "N\\P", "N\\P\\LISTED", "N\\P\\LISTED\\BELOW"})
    failures.push_back(NotMade("0", folder));
  failures.push_back("1" + Box("Velmora", "Otillåten katalog i listan @\\list.txt, rad 2:\n"));
  add({.name = "MakeAProject",
       .covers = "CProjPath::CreateProjectStructure",
       .prepare =
           [](Scene& s) {
             PrepareUser(s);
             s.Register(HKEY_LOCAL_MACHINE, kR20, L"InstallPath", s.At(L"PROG"));
             s.MakeIni(kUser, "\r\n[ARKIV]\r\nMAPPAR=" +
                                  ToUtf8(s.MakeFile(L"list.txt", "LISTED\\BELOW\r\n")) + "\r\n");
           },
       .run =
           [](Scene& s) {
             SetApplicationProfile(s.At(L"app.ini"));
             SetCommandLine(L"\"" + s.At(L"PROG\\a.exe\" x"));
             return std::to_string(CProjPath().CreateProjectStructure(s.At(L"N\\P"), 1, 0, 1, 1, 1, 1, 1));
           },
       .failures = failures,
       .several = true});
  failures = {"0" + Box("Velmora", "Fel, kan EJ skapa fil:\n@\\P\\HARBEL.DBF\\Harbel.krd")};
  for (const char* folder : {"TUNDRIL.RIT", "STACK", "MIRSEN.DBF", "DUNVEL.RIT", "MIRSEN.RIT", "KARSK.DBF",
                             "KARSK.RIT", "HARBEL.DBF", "HARBEL.RIT"})
    failures.push_back(NotMade("0", std::string("P\\") + folder));
  add({.name = "CompleteAProject",
       .covers = "CProjPath::CreateProjectStructure",
       .prepare = [](Scene& s) { s.MakeFile(L"P\\TUNDRIL.DBS", "database"); },
       .run =
           [](Scene& s) {
             return std::to_string(
                 CProjPath().CreateProjectStructure(s.At(L"P"), nullptr, 0, 1, 1, 1, 1, 1, 1));
           },
       .failures = failures,
       .several = true});
}

}  // namespace velmora::testing
