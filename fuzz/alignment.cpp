// Alignment files, single and combined: reading them plain and in UTF-16, with and without a line sink,
// writing, checks and look-ups. Arguments: pairs of coordinates.
#include <cmath>
#include <type_traits>

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/checks.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/vag2.h"
#include "velmora/locator/locator.h"

namespace velmora::fuzz {
namespace {

struct Content {
  std::vector<kovltype> plan, profile;
  CString name;
  int typ;
};
Content ContentOf(const CVaglinje& line) {
  return {line.Points(), {}, CString(FieldText(line.namn)), line.typ};
}
Content ContentOf(const CVag2& set) {
  return {set.plan.Points(), set.profil.Points(), CString(FieldText(set.vlNamn)), set.plan.typ};
}

void RequireSame(const Content& a, const Content& b, const char* what) {
  Require(SamePoints(a.plan, b.plan) && SamePoints(a.profile, b.profile), what);
  Require(a.name == b.name && a.typ == b.typ, what);
}

// Of an alignment that was read from the input's file.
template <class Alignment>
void RequireKept(Alignment* line, const Input& input, const CString& path) {
  Content content = ContentOf(*line);
  if (const auto wide = InUtf16(input.File())) {
    Alignment other;
    Require(other.Init(Put(L"WIDE.VL", *wide)) == 0, "the same in UTF-16");
    RequireSame(content, ContentOf(other), "the quick way reads what the general way reads");
  }
  Require(line->Uppdat(path) == 0, "a file can be written back in its own encoding");
  Alignment again;
  Require(again.Init(path) == 0, "what was written is read");
  for (auto* points : {&content.plan, &content.profile}) *points = Rewritten(*points);
  const Content back = ContentOf(again);
  Require(SamePoints(back.plan, content.plan), "points come back with four decimals");
  Require(SamePoints(back.profile, content.profile), "so do those of the profile");
  const bool has_head = !back.plan.empty() && std::is_same_v<Alignment, CVaglinje>;
  Require(!has_head || (back.name == content.name && back.typ == content.typ), "type and name come back");
  const std::string first = ReadBytes(path);
  Require(again.Uppdat(path) == 0 && ReadBytes(path) == first, "a second write is the first one");
}

void RequireLocatorAgrees(CVaglinje* line, double x, double y) {
  const Locator locator(*line);
  const auto same = [](double p, double q) { return Same(p, q) || (std::isnan(p) && std::isnan(q)); };
  const auto compare = [&](const char* what, auto ask) {
    double a[] = {7, 7};
    double b[] = {7, 7};
    Require(ask(*line, a) == ask(locator, b) && same(a[0], b[0]) && same(a[1], b[1]), what);
  };
  compare("Vag2xy of the locator", [&](auto& road, double* out) { return road.Vag2xy(x, y, out, out + 1); });
  compare("Vagprofz of the locator", [&](auto& road, double* out) { return road.Vagprofz(x, out); });
  compare("Vagstv of the locator", [&](auto& road, double* out) {
    if constexpr (std::is_same_v<decltype(road), CVaglinje&>)
      return road.Vagstv(x, y, out, out + 1, 0);
    else
      return road.Vagstv(x, y, out, out + 1);
  });
}

void RequireSinkGetsEveryLine(const CString& path, const CVag2& read) {
  TextReader reader;
  Require(reader.Open(path), "the file opens again");
  CVag2 again;
  int lines = 0;
  size_t points = 0;
  const auto sink = [&](int number, LineKind kind, const CString&) {
    Require(number == ++lines, "lines come in order");
    if (kind == LineKind::kPlanPoint || kind == LineKind::kProfilePoint) ++points;
  };
  Require(again.Read(reader, sink) == 0, "the file is read again");
  RequireSame(ContentOf(read), ContentOf(again), "a sink changes nothing");
  Require(LinesOf(path).size() == static_cast<size_t>(lines), "every line is reported");
  Require(read.plan.Points().size() + read.profil.Points().size() == points, "every point is reported");
}

void TryCombined(const Input& input) {
  const CString path = Put(L"ROAD.VL", input.File());
  CVag2 set;
  if (set.Init(path) != 0) return;
  RequireSinkGetsEveryLine(path, set);
  RequireKept(&set, input, path);
}

}  // namespace

void Run(const Input& input) {
  TryCombined(input);
  const CString path = Put(L"LINE.VL", input.File());
  CVaglinje line;
  const int reported = Messages();
  if (line.Init(path) != 0) return;
  const std::vector<kovltype> points = line.Points();
  const size_t skipped = static_cast<size_t>(Messages() - reported);
  Require(LinesOf(path).size() == points.size() + skipped, "every line is a point or reported");
  RequireKept(&line, input, path);

  std::vector<int> lines(points.size());
  CheckPlan(points, lines);
  CheckProfile(points, lines);
  MeasurePlan(points);
  MeasureProfile(points);
  for (size_t i = 0; i + 1 < std::min<size_t>(input.Arguments(), 8); i += 2) {
    const double x = input.Number(i);
    const double y = input.Number(i + 1);
    RequireLocatorAgrees(&line, x, y);
    double s = 0;
    double o = 0;
    line.Vagstv(x, y, &s, &o, 1);
    line.PktIomr(x, y, &s, &o, 2);
    line.SektKorr(x, y, s);
  }
  line.Reset();
  line.Extend(input.Number(0), input.Number(1));
  line.SektBerak(input.Number(0));
  if (!points.empty()) RequireLocatorAgrees(&line, points.front().x, points.back().y);
}

}  // namespace velmora::fuzz
