// The configuration, the parameters, the code files and a project's own copies.
#include <tuple>

#include "tests/reliability/operations.h"
#include "velmora/settings/jb23_par.h"
#include "velmora/settings/tundril_cfg.h"
#include "velmora/settings/tundril_inst.h"
#include "velmora/settings/tundril_par.h"

namespace velmora::testing {
namespace {

// A facade that has read nothing yet.
CTundrilInst Facade(Scene& s) {
  CTundrilInst facade;
  facade.Init(&s.ini, &s.project);
  return facade;
}

std::string Unreadable(const std::string& caption, const std::string& path) {
  return Box("Läsning av " + caption, "Kan inte öppna -filen\n@\\" + path + "\nAvbryter läsning!");
}
std::string Unwritable(const std::string& caption, const std::string& path) {
  return Box("Skrivning av Tundril - " + caption + " inställningar",
             "Kan inte öppna -filen\n@\\" + path + "\nAvbryter!");
}
std::string NotUpdated(const std::string& path) {
  return Box("Update Velmora Settings", "Could not open file for write\n@\\" + path);
}

// Lines that are read in several pieces.
std::string LongerThanARead() {
  std::string lines;
  while (lines.size() < 300'000) lines += std::to_string(lines.size()) + "   50\r\n";
  return lines;
}

int WriteConfiguration(Scene& s) { return CTundrilCFG(&s.ini).WriteKey(L"ENHET", L"FOT"); }

// What the installation has of every file that a project may copy; the project has some of its own.
void PrepareCopies(Scene& s) {
  for (const char* name : {"TUNDRIL.PAR", "LINKOD.PAR", "KODFIL.DAT", "JB23.PAR", "KARSK.PAR"})
    s.CopyExample(std::string("installation/") + name, CString(L"cfg\\") + FromUtf8(name));
  s.MakeFile(L"prog\\Stenkod.dat", "a b\r\n");
  s.MakeFile(L"P\\LINKOD.PAR", "the project's\r\n*\r\n");
  s.MakeFile(L"P\\NOTES.TXT", "not ours");
}

void PrepareProjectsCopies(Scene& s) {
  PrepareCopies(s);
  for (const wchar_t* name : {L"TUNDRIL.PAR", L"KODFIL.DAT", L"MILJKOD.DAT", L"Stenkod.dat", L"KARSK.PAR"})
    s.MakeFile(CString(L"P\\") + name, "the project's");
}

void PrepareOwnParameters(Scene& s) {
  PrepareCopies(s);
  s.MakeFile(L"P\\TUNDRIL.PAR", "HSKALA=1\r\n");
}

std::vector<int> MakeCopies(Scene& s) {
  CTundrilInst facade = Facade(s);
  const int stone = facade.CreateLokalStenFil(0);
  return {facade.CreateLokalaFiler(0, 1), stone};
}

std::vector<int> RemoveCopies(Scene& s) {
  CTundrilInst facade = Facade(s);
  const int files = facade.RemoveLokalaFiler();
  return {files, facade.RemoveLokalStenFil()};
}

std::vector<int> WriteObjectCodes(Scene& s) {
  CTundrilInst facade = Facade(s);
  return {facade.KodfilDatWrite(1, L"A", L"först"),
          facade.KodfilDatWrite(0, L"B", std::wstring(80'000, L'x').c_str()),
          facade.KodfilDatWrite(2, L"C", L"sist")};
}

std::vector<int> WriteEnvironmentalCodes(Scene& s) {
  CTundrilInst facade = Facade(s);
  std::vector<int> results = {facade.MiljKodWrite(1, L"", L"", 0, 0)};
  for (const auto& [mode, name] : {std::tuple(2, L"M"), {3, L""}, {4, L"T"}, {5, L""}, {6, L"K"}, {7, L""}})
    results.push_back(facade.MiljKodWrite(mode, name, L"text", 4, 2));
  return results;
}

std::vector<int> WriteLineCodes(Scene& s) {
  CTundrilInst facade = Facade(s);
  return {facade.LinkodWrite(1, L"", L"", L"", L"", L""),
          facade.LinkodWrite(2, L"A", L"ord", L"1.5", L"text", L""),
          facade.LinkodWrite(4, L"12", L"ord", L"1.5", L"text", L"3"),
          facade.LinkodWrite(5, L"", L"", L"", L"", L"")};
}

std::vector<int> WriteStamp(Scene& s) {
  CTundrilInst facade = Facade(s);
  const CString path = s.At(L"P\\STAMP.DAT");
  return {facade.StampParWrite(path, 1, L"", L"", L"", L"", L""),
          facade.StampParWrite(path, 2, L"KUND", L"Åby", L"1", L"2", L"3"),
          facade.StampParWrite(path, 3, L"", L"", L"", L"", L"")};
}

}  // namespace

Operations SettingsOperations() {
  const auto unreadable = [](const std::string& path) { return Unreadable("Tundril - inställningar", path); };
  std::vector<std::string> not_updated;
  for (std::string told = "0"; not_updated.size() < 4;
       told += Unreadable("Tundril - Miljkod.dat inställningar", "cfg\\MILJKOD.DAT"))
    not_updated.push_back(told + Unwritable("Miljkod.dat", "cfg\\MILJKOD.DAT"));
  const std::string no_configuration =
      Box("Läsning av Tundril - konfigurering",
          "Kan inte öppna CFG-filen\n@\\cfg\\TUNDRIL.CFG\nAvbryter läsning!");
  const auto configuration = Copying("installation/TUNDRIL.CFG", L"cfg\\TUNDRIL.CFG");
  const auto parameters = Copying("installation/TUNDRIL.PAR", L"P\\TUNDRIL.PAR");
  const auto stamp = Copying("installation/STAMPEL1.DAT", L"P\\STAMP.DAT");
  const auto environment = Copying("installation/MILJKOD.DAT", L"cfg\\MILJKOD.DAT");
  const auto classes =
      Holding(L"cfg\\MILJKOD.DAT", "head\r\n*\r\n*\r\nM method\r\n*\r\n*\r\nK class max=3 steg=1\r\n*\r\n");
  const auto rig = Holding(L"cfg\\JB23.PAR", LongerThanARead());
  const auto codes = Holding(L"cfg\\KODFIL.DAT", LongerThanARead() + "*\r\nold   text\r\n*\r\n");
  const auto own_codes = Holding(L"P\\KODFIL.DAT", "old\r\n*\r\n*\r\n");
  const auto add = [](Scene& s) { return CTundrilPAR(&s.ini, &s.project).WriteKey(L"NEWKEY", L"7 å"); };
  const auto set = [](Scene& s) { return Facade(s).WriteKey(L"KARSK.PAR", L"HSKALA", -1); };
  const auto set_rig = [](Scene& s) { return Facade(s).WriteKey(L"JB23.PAR", L"HASTSTEG", 2.5, 3); };
  const auto write_rig = [](Scene& s) { return ToUtf8(Facade(s).Jb23WriteKey(L"USKALA", L"700")); };
  const auto make_rig = [](Scene& s) { return ToUtf8(Facade(s).Jb23WriteKey(L"SJUNKSKALA", L"200")); };
  const auto copy = [](Scene& s) { return Facade(s).CreateLokalaFiler(1, 1); };
  const auto complete = [](Scene& s) { return Facade(s).ProjInst(); };
  const auto update = [](Scene& s) { return Facade(s).MiljkodUppdatX(); };
  // Of a sequence of writes: the first call notices it, or the last one.
  const auto failing = [](const std::string& begin, const std::string& end, const std::string& box) {
    return std::vector<std::string>{begin + box, end + box};
  };
  const auto failed_parameters =
      failing("-1", "-1" + unreadable("P\\TUNDRIL.PAR"), NotUpdated("P\\TUNDRIL.PAR"));
  const auto failed_facade = failing("-1", "-1" + Unreadable("Karsk - inställningar", "cfg\\KARSK.PAR"),
                                     NotUpdated("cfg\\KARSK.PAR"));
  // The file is written also when it was not readable.
  const auto failed_rig =
      failing("0", "-1" + Unreadable("Tundril - jb2/3 inställningar", "cfg\\JB23.PAR"), "");
  const auto failed_environment =
      failing("0 -1 -1 -1 -1 -1 -1", "0 0 0 0 0 0 0", Unwritable("Miljkod.dat", "cfg\\MILJKOD.DAT"));
  const auto failed_lines = failing("0 -1 -1 -1", "0 0 0 0", Unwritable("Linkod.par", "P\\LINKOD.PAR"));
  const auto failed_stamp = failing("0 -1 -1", "0 0 0", Unwritable("Stämpel", "P\\STAMP.DAT"));
  Operation removal = Silent("RemoveAProjectsSettings", PrepareProjectsCopies, RemoveCopies, "0 0", true);
  removal.forgets = true;
  return {
      {"WriteTheConfiguration", configuration, WriteConfiguration, "0", {"-1", "-1" + no_configuration}},
      {"MakeTheConfiguration", Nothing, WriteConfiguration, "0", {"-1"}},
      {"WriteParameters", parameters, add, "0", failed_parameters},
      {"WriteParametersThroughTheFacade", PrepareCopies, set, "0", failed_facade},
      {"WriteRigParametersThroughTheFacade", PrepareCopies, set_rig, "0", failed_rig, true},
      Silent("WriteARigParameter", rig, write_rig, "700"),
      Silent("MakeTheRigParameters", Nothing, make_rig, "200"),
      Silent("CopySettingsToTheProject", PrepareCopies, copy, "0", true),
      Silent("MakeSettingsInTheProject", own_codes, MakeCopies, "0 0", true),
      Silent("CompleteAProjectsSettings", PrepareOwnParameters, complete, "1", true),
      removal,
      {"WriteObjectCodes",
       codes,
       WriteObjectCodes,
       "0 0 0",
       {"0 0 0" + Unwritable("kodfil.dat", "cfg\\KODFIL.DAT\n@\\cfg\\KODFIL.tmp")}},
      {"WriteEnvironmentalCodes", environment, WriteEnvironmentalCodes, "0 0 0 0 0 0 0", failed_environment},
      {"AddEnvironmentalCodes", classes, update, "0", not_updated},
      {"WriteLineCodes", PrepareCopies, WriteLineCodes, "0 0 0 0", failed_lines},
      {"WriteAStamp", stamp, WriteStamp, "0 0 0", failed_stamp}};
}

}  // namespace velmora::testing
