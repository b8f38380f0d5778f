// Single alignment files: reading them plain and in UTF-16, writing, checks and look-ups. Arguments: pairs of
// coordinates.
#include <cmath>
#include <type_traits>

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/checks.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/vaglinje.h"
#include "velmora/locator/locator.h"

namespace velmora::fuzz {
namespace {

bool SameHead(const CVaglinje& a, const CVaglinje& b) {
  return a.typ == b.typ && FieldText(a.namn) == FieldText(b.namn);
}

void RequireWrites(CVaglinje* line, const CString& path) {
  Require(line->Uppdat(path) == 0, "a file can be written back in its own encoding");
  CVaglinje again;
  Require(again.Init(path) == 0, "what was written is read");
  Require(SamePoints(again.Points(), Rewritten(line->Points())), "points come back with four decimals");
  Require(again.Points().empty() || SameHead(again, *line), "type and name come back");
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

}  // namespace

void Run(const Input& input) {
  const CString path = Put(L"LINE.VL", input.File());
  CVaglinje line;
  const int reported = Messages();
  if (line.Init(path) != 0) return;
  const std::vector<kovltype> points = line.Points();
  const size_t skipped = static_cast<size_t>(Messages() - reported);
  Require(LinesOf(path).size() == points.size() + skipped, "every line is a point or reported");
  if (const auto wide = InUtf16(input.File())) {
    CVaglinje other;
    Require(other.Init(Put(L"WIDE.VL", *wide)) == 0, "the same in UTF-16");
    Require(SamePoints(points, other.Points()) && SameHead(line, other),
            "the quick way reads what the general way reads");
  }
  RequireWrites(&line, path);

  std::vector<int> lines(points.size());
  CheckPlan(points, lines);
  CheckProfile(points, lines);
  MeasurePlan(points);
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
