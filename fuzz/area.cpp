// Area files: reading, and a rewrite that keeps what comes before the area. Arguments: the new limits.
#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/alignment/vag2.h"
#include "velmora/platform/files.h"

namespace velmora::fuzz {
namespace {

constexpr wchar_t kRoad[] = L"TUNDRIL.DBF\\ROAD.VL";

std::vector<CString> ForeignPart(const CString& path) {
  std::vector<CString> lines = LinesOf(path);
  int stars = 0;
  for (size_t i = 0; i < lines.size(); ++i)
    if (lines[i].GetAt(0) == L'*' && ++stars == 2) lines.resize(i + 1);
  if (stars < 2) lines.clear();
  return lines;
}

}  // namespace

void Run(const Input& input) {
  CProjPath project;
  project.SetPath(Scratch(L"proj"));
  if (!FileOrFolderExists(project.m_DbfKat)) {
    MakeFolder(project.m_ProjKat);
    MakeFolder(project.m_DbfKat);
    Put(CString(L"proj\\") + kRoad, "0 0 0 0 1 $a\r\n0 100 0 100\r\n");
  }
  WriteBytes(project.m_VlPath, input.File());
  CVag2 road;
  const int read = road.ReadOmr(&project);
  Require(read == 0 || read == -1, "ReadOmr answers 0 or -1");
  if (read == 0 && FieldText(road.vlFil) == L"ROAD.VL")
    Require(road.plan.Points().size() == 2, "the alignment is read");

  const std::vector<CString> foreign = ForeignPart(project.m_VlPath);
  CopyToField(road.vlFil, L"ROAD.VL");
  road.omrSekMin = input.Number(0);
  road.omrSekMax = input.Number(1);
  road.omrAvstMin = input.Number(2);
  road.omrAvstMax = input.Number(3);
  Require(road.SaveOmr(&project) == 0, "the area can be saved");
  if (foreign.empty()) return;
  Require(ForeignPart(project.m_VlPath) == foreign, "what comes before the area is kept");
  CVag2 again;
  Require(again.ReadOmr(&project) == 0, "what was saved is read");
  for (double CVag2::*limit : {&CVag2::omrSekMin, &CVag2::omrSekMax, &CVag2::omrAvstMin, &CVag2::omrAvstMax})
    Require(Same(again.*limit, Rewritten(road.*limit, 3)), "limits come back with three decimals");
}

}  // namespace velmora::fuzz
