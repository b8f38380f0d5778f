// Alignments, their working area, and support points.
#include "tests/reliability/operations.h"
#include "velmora/alignment/stod_punkt.h"
#include "velmora/alignment/vag2.h"
#include "velmora/alignment/vaglinje.h"

namespace velmora::testing {
namespace {

// Longer than what is written at a time.
void Fill(CVaglinje* line, int points) {
  for (int i = 0; i < points; ++i) {
    const kovltype point{.x = 6'500'000.0 + i, .y = 150'000.0, .bulge = 0, .sek = 1.0 * i};
    line->Ny(1, &point);
  }
}

void PrepareLine(Scene& s) { s.CopyExample("road.vl", L"P\\TUNDRIL.DBF\\A.VL"); }

// More of others' lines than is read at a time, so that reading may fail among them.
void SetArea(Scene& s) {
  std::string others;
  while (others.size() < 300'000) others += "others' line " + std::to_string(others.size()) + "\r\n";
  s.MakeFile(L"P\\TUNDRIL.DBF\\TUNDRIL.VL",
             others + "*\r\nå more\r\n*\r\nOLD.VL\r\n0.000 1.000\r\n-1.000 1.000\r\nbehind\r\n");
}

std::string SaveArea(Scene& s) {
  CVag2 set;
  CopyToField(set.vlFil, L"A.VL");
  set.omrSekMax = 250;
  return std::to_string(set.SaveOmr(&s.project));
}

std::string CannotOpen(const std::string& result) {
  return result + Box("Velmora", "Kan ej öppna väglinje : @\\P\\TUNDRIL.DBF\\A.VL");
}

}  // namespace

void AddAlignmentOperations(std::vector<Operation>* operations) {
  const auto add = [&](Operation operation) { operations->push_back(std::move(operation)); };
  add({.name = "WriteAnAlignment",
       .covers = "CVaglinje::Uppdat",
       .prepare = PrepareLine,
       .run =
           [](Scene& s) {
             CVaglinje line;
             Fill(&line, 4000);
             return std::to_string(line.Uppdat(s.At(L"P\\TUNDRIL.DBF\\A.VL")));
           },
       .done = "0",
       .failures = {CannotOpen("-1")}});
  add({.name = "MakeAnAlignmentSet",
       .covers = "CVag2::Uppdat",
       .prepare = [](Scene&) {},
       .run =
           [](Scene& s) {
             CVag2 set;
             Fill(&set.plan, 900);
             Fill(&set.profil, 5);
             return std::to_string(set.Uppdat(s.At(L"P\\TUNDRIL.DBF\\A.VL")));
           },
       .done = "0",
       .failures = {CannotOpen("-1")}});
  add({.name = "WriteAProfileOnly",
       .covers = "CVag2::Uppdat",
       .prepare = PrepareLine,
       .run =
           [](Scene& s) {
             CVag2 set;
             Fill(&set.profil, 5);
             return std::to_string(set.Uppdat(s.At(L"P\\TUNDRIL.DBF\\A.VL")));
           },
       .done = "0",
       .failures = {CannotOpen("-1")}});
  add({.name = "SaveTheArea",
       .covers = "CVag2::SaveOmr",
       .prepare = SetArea,
       .run = SaveArea,
       .done = "0",
       .failures = {"-1"}});
  add({.name = "MakeTheAreaFile",
       .covers = "CVag2::SaveOmr",
       .prepare = PrepareLine,
       .run = SaveArea,
       .done = "0",
       .failures = {"-1"}});
  add({.name = "WriteSupportPoints",
       .covers = "CStodPunkt::Uppdat",
       .prepare = [](Scene& s) { s.CopyExample("support.stp", L"P\\$A.STP"); },
       .run =
           [](Scene& s) {
             CStodPunkt points(s.At(L"P\\$A.STP"));
             points.gvy = 3;
             return std::to_string(points.Uppdat(nullptr));
           },
       .done = "0",
       .failures = {"-1" + Box("Velmora", "Kan ej skapa/uppdatera stödpunkt : @\\P\\$A.STP"),
                    "-1" + Box("Velmora", "Kan ej öppna stödpunkt : @\\P\\$A.STP") +
                        Box("Velmora", "Kan ej skapa/uppdatera stödpunkt : @\\P\\$A.STP")}});
}

}  // namespace velmora::testing
