// Support-point files: reading them plain and in UTF-16, and writing.
#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/alignment/stod_punkt.h"
#include "velmora/common/last_message.h"
#include "velmora/text/letters.h"

namespace velmora::fuzz {
namespace {

std::vector<stdpkttype> PointsOf(CStodPunkt* support) {
  std::vector<stdpkttype> points;
  for (int at = support->Home(); at == 0; at = (*support)++ == nullptr ? -1 : 0)
    points.push_back(*support->pael);
  return points;
}

bool SamePoint(const stdpkttype& a, const stdpkttype& b) {
  if (FieldText(a.namn) != FieldText(b.namn) || !Same(a.z, b.z)) return false;
  return std::equal(std::begin(a.varden), std::end(a.varden), std::begin(b.varden),
                    [](float x, float y) { return Same(x, y); });
}

bool SamePoints(const std::vector<stdpkttype>& a, const std::vector<stdpkttype>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), SamePoint);
}

// Whether a name, alone on its line, is read as something else.
bool IsMisread(std::wstring_view name) { return name.starts_with(L'*') || EqualNoCase(name, L"gvy"); }

}  // namespace

void Run(const Input& input) {
  KeepMessageText(CString());
  const CString path = Put(L"A$1.STP", input.File());
  const int boxes = Messages();
  CStodPunkt read(path);
  if (Messages() != boxes) return;
  std::vector<stdpkttype> points = PointsOf(&read);
  for (const stdpkttype& point : points) Require(FieldText(point.namn).size() < 12, "names are terminated");
  if (const auto wide = InUtf16(input.File())) {
    CStodPunkt other(Put(L"WIDE.STP", *wide));
    Require(SamePoints(points, PointsOf(&other)), "the quick way reads what the general way reads");
    Require(Same(read.gvy, other.gvy) && Same(read.huvud6, other.huvud6), "so does the header");
  }
  Require(read.Uppdat(nullptr) == 0, "a file can be written back in its own encoding");
  for (const stdpkttype& point : points)
    if (IsMisread(FieldText(point.namn))) return;
  CStodPunkt again(path);
  for (stdpkttype& point : points) point.z = static_cast<float>(Rewritten(point.z, 4));
  Require(SamePoints(points, PointsOf(&again)), "points come back");
  for (double CStodPunkt::*head : {&CStodPunkt::huvud1, &CStodPunkt::huvud2, &CStodPunkt::huvud3,
                                   &CStodPunkt::huvud4, &CStodPunkt::huvud5})
    Require(Same(again.*head, Rewritten(read.*head, 6)), "the header comes back");
}

}  // namespace velmora::fuzz
