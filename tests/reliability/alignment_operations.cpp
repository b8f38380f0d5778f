// Alignments, their working area, and support points.
#include "tests/reliability/operations.h"
#include "velmora/alignment/stod_punkt.h"
#include "velmora/alignment/vag2.h"
#include "velmora/alignment/vaglinje.h"

namespace velmora::testing {
namespace {

void Fill(CVaglinje* line, int points) {
  for (int i = 0; i < points; ++i) {
    const kovltype point{.x = 6'500'000.0 + i, .y = 150'000.0, .bulge = 0, .sek = 1.0 * i};
    line->Ny(1, &point);
  }
}

// The lines of others fill several reads, so that reading may fail among them.
void PrepareArea(Scene& s) {
  std::string others;
  while (others.size() < 300'000) others += "others' line " + std::to_string(others.size()) + "\r\n";
  s.MakeFile(L"P\\TUNDRIL.DBF\\TUNDRIL.VL",
             others + "*\r\nå more\r\n*\r\nOLD.VL\r\n0.000 1.000\r\n-1.000 1.000\r\nbehind\r\n");
}

// Alignments of several writes, of a plan and a profile and of the profile alone.
int WriteLine(Scene& s) {
  CVaglinje line;
  Fill(&line, 4000);
  return line.Uppdat(s.At(L"P\\TUNDRIL.DBF\\A.VL"));
}
int WriteSet(Scene& s, int plan_points) {
  CVag2 set;
  Fill(&set.plan, plan_points);
  Fill(&set.profil, 5);
  return set.Uppdat(s.At(L"P\\TUNDRIL.DBF\\A.VL"));
}
int WriteBoth(Scene& s) { return WriteSet(s, 900); }
int WriteProfileOnly(Scene& s) { return WriteSet(s, 0); }

int SaveArea(Scene& s) {
  CVag2 set;
  CopyToField(set.vlFil, L"A.VL");
  set.omrSekMax = 250;
  return set.SaveOmr(&s.project);
}

int WritePoints(Scene& s) {
  CStodPunkt points(s.At(L"P\\$A.STP"));
  points.gvy = 3;
  return points.Uppdat(nullptr);
}

}  // namespace

Operations AlignmentOperations() {
  const std::string cannot_open = "-1" + Box("Velmora", "Kan ej öppna väglinje : @\\P\\TUNDRIL.DBF\\A.VL");
  const std::string not_updated = Box("Velmora", "Kan ej skapa/uppdatera stödpunkt : @\\P\\$A.STP");
  const auto line = Copying("road.vl", L"P\\TUNDRIL.DBF\\A.VL");
  const auto points = Copying("support.stp", L"P\\$A.STP");
  const std::string cannot_read = Box("Velmora", "Kan ej öppna stödpunkt : @\\P\\$A.STP");
  return {{"WriteAnAlignment", line, WriteLine, "0", {cannot_open}},
          {"MakeAnAlignmentSet", Nothing, WriteBoth, "0", {cannot_open}},
          {"WriteAProfileOnly", line, WriteProfileOnly, "0", {cannot_open}},
          {"SaveTheArea", PrepareArea, SaveArea, "0", {"-1"}},
          {"MakeTheAreaFile", line, SaveArea, "0", {"-1"}},
          {"WriteSupportPoints",
           points,
           WritePoints,
           "0",
           {"-1" + not_updated, "-1" + cannot_read + not_updated}}};
}

}  // namespace velmora::testing
