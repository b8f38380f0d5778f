// Combined alignment files: reading them plain and in UTF-16, with and without a line sink; and writing.
#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/alignment/vag2.h"

namespace velmora::fuzz {
namespace {

void RequireSame(const CVag2& a, const CVag2& b, const char* what) {
  Require(SamePoints(a.plan.Points(), b.plan.Points()), what);
  Require(SamePoints(a.profil.Points(), b.profil.Points()), what);
  Require(FieldText(a.vlNamn) == FieldText(b.vlNamn), what);
}

void RequireSinkGetsEveryLine(const CString& path, const CVag2& read) {
  TextReader reader;
  Require(reader.Open(path), "the file opens again");
  CVag2 again;
  int lines = 0;
  size_t points = 0;
  Require(again.Read(reader,
                     [&](int number, LineKind kind, const CString&) {
                       Require(number == ++lines, "lines come in order");
                       if (kind == LineKind::kPlanPoint || kind == LineKind::kProfilePoint) ++points;
                     }) == 0,
          "the file is read again");
  RequireSame(read, again, "a sink changes nothing");
  Require(LinesOf(path).size() == static_cast<size_t>(lines), "every line is reported");
  Require(read.plan.Points().size() + read.profil.Points().size() == points, "every point is reported");
}

}  // namespace

void Run(const Input& input) {
  const CString path = Put(L"ROAD.VL", input.File());
  CVag2 read;
  if (read.Init(path) != 0) return;
  RequireSinkGetsEveryLine(path, read);
  if (const auto wide = InUtf16(input.File())) {
    CVag2 other;
    Require(other.Init(Put(L"WIDE.VL", *wide)) == 0, "the same in UTF-16");
    RequireSame(read, other, "the quick way reads what the general way reads");
  }
  Require(read.Uppdat(path) == 0, "a file can be written back in its own encoding");
  CVag2 again;
  Require(again.Init(path) == 0, "what was written is read");
  Require(SamePoints(again.plan.Points(), Rewritten(read.plan.Points())), "the plan comes back");
  Require(SamePoints(again.profil.Points(), Rewritten(read.profil.Points())), "the profile comes back");
  const std::string first = ReadBytes(path);
  Require(again.Uppdat(path) == 0 && ReadBytes(path) == first, "a second write is the first one");
}

}  // namespace velmora::fuzz
