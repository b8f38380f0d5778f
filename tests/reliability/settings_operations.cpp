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

template <class... Results>
std::string Join(Results... results) {
  std::string joined;
  ((joined += (joined.empty() ? "" : " ") + std::to_string(results)), ...);
  return joined;
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

std::string WriteConfiguration(Scene& s) {
  CTundrilCFG configuration(&s.ini);
  return std::to_string(configuration.WriteKey(L"ENHET", L"FOT"));
}

// What the installation has of every file that a project may copy; the project has some of its own.
void PrepareCopies(Scene& s) {
  for (const char* name : {"TUNDRIL.PAR", "LINKOD.PAR", "KODFIL.DAT", "JB23.PAR", "KARSK.PAR"})
    s.CopyExample(std::string("installation/") + name, CString(L"cfg\\") + FromUtf8(name));
  s.MakeFile(L"prog\\Stenkod.dat", "a b\r\n");
  s.MakeFile(L"P\\LINKOD.PAR", "the project's\r\n*\r\n");
  s.MakeFile(L"P\\NOTES.TXT", "not ours");
}

}  // namespace

void AddSettingsOperations(std::vector<Operation>* operations) {
  const auto add = [&](Operation operation) { operations->push_back(std::move(operation)); };
  add({.name = "WriteTheConfiguration",
       .covers = "CTundrilCFG::WriteKey KeyValueList::WriteTo",
       .prepare = [](Scene& s) { s.CopyExample("installation/TUNDRIL.CFG", L"cfg\\TUNDRIL.CFG"); },
       .run = WriteConfiguration,
       .done = "0",
       .failures = {"-1", "-1" + Box("Läsning av Tundril - konfigurering",
                                     "Kan inte öppna CFG-filen\n@\\cfg\\TUNDRIL.CFG\nAvbryter läsning!")}});
  add({.name = "MakeTheConfiguration",
       .covers = "CTundrilCFG::WriteKey",
       .prepare = [](Scene&) {},
       .run = WriteConfiguration,
       .done = "0",
       .failures = {"-1"}});
  add({.name = "WriteParameters",
       .covers = "CTundrilPAR::WriteKey",
       .prepare = [](Scene& s) { s.CopyExample("installation/TUNDRIL.PAR", L"P\\TUNDRIL.PAR"); },
       .run =
           [](Scene& s) {
             return std::to_string(CTundrilPAR(&s.ini, &s.project).WriteKey(L"NEWKEY", L"7 å"));
           },
       .done = "0",
       .failures = {"-1" + NotUpdated("P\\TUNDRIL.PAR"),
                    "-1" + Unreadable("Tundril - inställningar", "P\\TUNDRIL.PAR") +
                        NotUpdated("P\\TUNDRIL.PAR")}});
  add({.name = "WriteParametersThroughTheFacade",
       .covers = "CTundrilInst::WriteKey",
       .prepare = PrepareCopies,
       .run = [](Scene& s) { return std::to_string(Facade(s).WriteKey(L"KARSK.PAR", L"HSKALA", -1)); },
       .done = "0",
       .failures = {
           "-1" + NotUpdated("cfg\\KARSK.PAR"),
           "-1" + Unreadable("Karsk - inställningar", "cfg\\KARSK.PAR") + NotUpdated("cfg\\KARSK.PAR")}});
  add({.name = "WriteRigParametersThroughTheFacade",
       .covers = "CTundrilInst::WriteKey",
       .prepare = PrepareCopies,
       .run = [](Scene& s) { return std::to_string(Facade(s).WriteKey(L"JB23.PAR", L"HASTSTEG", 2.5, 3)); },
       .done = "0",
       .failures = {"0", "-1" + Unreadable("Tundril - jb2/3 inställningar", "cfg\\JB23.PAR")},
       .several = true});  // the file is written all the same
  add({.name = "WriteARigParameter",
       .covers = "CTundrilInst::Jb23WriteKey",
       .prepare = [](Scene& s) { s.MakeFile(L"cfg\\JB23.PAR", LongerThanARead()); },
       .run = [](Scene& s) { return ToUtf8(Facade(s).Jb23WriteKey(L"USKALA", L"700")); },
       .done = "700",
       .failures = {"700"}});
  add({.name = "MakeTheRigParameters",
       .covers = "CTundrilInst::Jb23WriteKey",
       .prepare = [](Scene&) {},
       .run = [](Scene& s) { return ToUtf8(Facade(s).Jb23WriteKey(L"SJUNKSKALA", L"200")); },
       .done = "200",
       .failures = {"200"}});
  add({.name = "CopySettingsToTheProject",
       .covers = "CTundrilInst::CreateLokalaFiler",
       .prepare = PrepareCopies,
       .run = [](Scene& s) { return std::to_string(Facade(s).CreateLokalaFiler(1, 1)); },
       .done = "0",
       .failures = {"0"},
       .several = true});
  add({.name = "MakeSettingsInTheProject",
       .covers = "CTundrilInst::CreateLokalaFiler CTundrilInst::CreateLokalStenFil",
       .prepare = [](Scene& s) { s.MakeFile(L"P\\KODFIL.DAT", "old\r\n*\r\n*\r\n"); },
       .run =
           [](Scene& s) {
             CTundrilInst facade = Facade(s);
             const int both = facade.CreateLokalStenFil(0);
             return Join(facade.CreateLokalaFiler(0, 1), both);
           },
       .done = "0 0",
       .failures = {"0 0"},
       .several = true});
  add({.name = "CompleteAProjectsSettings",
       .covers = "CTundrilInst::ProjInst",
       .prepare =
           [](Scene& s) {
             PrepareCopies(s);
             s.MakeFile(L"P\\TUNDRIL.PAR", "HSKALA=1\r\n");
           },
       .run = [](Scene& s) { return std::to_string(Facade(s).ProjInst()); },
       .failures = {"1"},
       .several = true});
  add({.name = "RemoveAProjectsSettings",
       .covers = "CTundrilInst::RemoveLokalaFiler CTundrilInst::RemoveLokalStenFil",
       .prepare =
           [](Scene& s) {
             PrepareCopies(s);
             for (const wchar_t* name :
                  {L"TUNDRIL.PAR", L"KODFIL.DAT", L"MILJKOD.DAT", L"Stenkod.dat", L"KARSK.PAR"})
               s.MakeFile(CString(L"P\\") + name, "the project's");
           },
       .run =
           [](Scene& s) {
             CTundrilInst facade = Facade(s);
             const int both = facade.RemoveLokalaFiler();
             return Join(both, facade.RemoveLokalStenFil());
           },
       .done = "0 0",
       .failures = {"0 0"},
       .several = true,
       .forgets = true});
  add({.name = "WriteObjectCodes",
       .covers = "CTundrilInst::KodfilDatWrite",
       .prepare =
           [](Scene& s) { s.MakeFile(L"cfg\\KODFIL.DAT", LongerThanARead() + "*\r\nold   text\r\n*\r\n"); },
       .run =
           [](Scene& s) {
             CTundrilInst facade = Facade(s);
             const int first = facade.KodfilDatWrite(1, L"A", L"först");
             const int second = facade.KodfilDatWrite(0, L"B", std::wstring(80'000, L'x').c_str());
             return Join(first, second, facade.KodfilDatWrite(2, L"C", L"sist"));
           },
       .done = "0 0 0",
       .failures = {"0 0 0" + Unwritable("kodfil.dat", "cfg\\KODFIL.DAT\n@\\cfg\\KODFIL.tmp")}});
  add({.name = "WriteEnvironmentalCodes",
       .covers = "CTundrilInst::MiljKodWrite",
       .prepare = [](Scene& s) { s.CopyExample("installation/MILJKOD.DAT", L"cfg\\MILJKOD.DAT"); },
       .run =
           [](Scene& s) {
             CTundrilInst facade = Facade(s);
             std::string results = std::to_string(facade.MiljKodWrite(1, L"", L"", 0, 0));
             for (const auto& [mode, name] :
                  {std::tuple(2, L"M"), {3, L""}, {4, L"T"}, {5, L""}, {6, L"K"}, {7, L""}})
               results += " " + std::to_string(facade.MiljKodWrite(mode, name, L"text", 4, 2));
             return results;
           },
       .done = "0 0 0 0 0 0 0",
       .failures = {"0 -1 -1 -1 -1 -1 -1" + Unwritable("Miljkod.dat", "cfg\\MILJKOD.DAT"),
                    "0 0 0 0 0 0 0" + Unwritable("Miljkod.dat", "cfg\\MILJKOD.DAT")}});
  std::vector<std::string> not_updated;
  for (int unreadable = 0; unreadable < 4; ++unreadable) {
    std::string told = "0";
    for (int i = 0; i < unreadable; ++i)
      told += Unreadable("Tundril - Miljkod.dat inställningar", "cfg\\MILJKOD.DAT");
    not_updated.push_back(told + Unwritable("Miljkod.dat", "cfg\\MILJKOD.DAT"));
  }
  add({.name = "AddEnvironmentalCodes",
       .covers = "CTundrilInst::MiljkodUppdatX",
       .prepare =
           [](Scene& s) {
             s.MakeFile(L"cfg\\MILJKOD.DAT",
                        "head\r\n*\r\n*\r\nM method\r\n*\r\n*\r\nK class max=3 steg=1\r\n*\r\n");
           },
       .run = [](Scene& s) { return std::to_string(Facade(s).MiljkodUppdatX()); },
       .done = "0",
       .failures = not_updated});
  add({.name = "WriteLineCodes",
       .covers = "CTundrilInst::LinkodWrite",
       .prepare = PrepareCopies,
       .run =
           [](Scene& s) {
             CTundrilInst facade = Facade(s);
             const int begun = facade.LinkodWrite(1, L"", L"", L"", L"", L"");
             const int first = facade.LinkodWrite(2, L"A", L"ord", L"1.5", L"text", L"");
             const int second = facade.LinkodWrite(4, L"12", L"ord", L"1.5", L"text", L"3");
             return Join(begun, first, second, facade.LinkodWrite(5, L"", L"", L"", L"", L""));
           },
       .done = "0 0 0 0",
       .failures = {"0 -1 -1 -1" + Unwritable("Linkod.par", "P\\LINKOD.PAR"),
                    "0 0 0 0" + Unwritable("Linkod.par", "P\\LINKOD.PAR")}});
  add({.name = "WriteAStamp",
       .covers = "CTundrilInst::StampParWrite",
       .prepare = [](Scene& s) { s.CopyExample("installation/STAMPEL1.DAT", L"P\\STAMP.DAT"); },
       .run =
           [](Scene& s) {
             CTundrilInst facade = Facade(s);
             const CString path = s.At(L"P\\STAMP.DAT");
             const int begun = facade.StampParWrite(path, 1, L"", L"", L"", L"", L"");
             const int line = facade.StampParWrite(path, 2, L"KUND", L"Åby", L"1", L"2", L"3");
             return Join(begun, line, facade.StampParWrite(path, 3, L"", L"", L"", L"", L""));
           },
       .done = "0 0 0",
       .failures = {"0 -1 -1" + Unwritable("Stämpel", "P\\STAMP.DAT"),
                    "0 0 0" + Unwritable("Stämpel", "P\\STAMP.DAT")}});
}

}  // namespace velmora::testing
