// Single alignment files: reading, both ways; writing; and what is asked of the points. Arguments: pairs of
// coordinates.
#include <cmath>

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

bool SameOrBothNot(double a, double b) { return Same(a, b) || (std::isnan(a) && std::isnan(b)); }

void RequireLocatorAgrees(CVaglinje* line, double x, double y) {
  const Locator locator(*line);
  double s[2] = {7, 7};
  double o[2] = {7, 7};
  Require(line->Vagstv(x, y, &s[0], &o[0], 0) == locator.Vagstv(x, y, &s[1], &o[1]), "Vagstv of the locator");
  Require(SameOrBothNot(s[0], s[1]) && SameOrBothNot(o[0], o[1]), "station and offset of the locator");
  double px[2] = {7, 7};
  double py[2] = {7, 7};
  Require(line->Vag2xy(x, y, &px[0], &py[0]) == locator.Vag2xy(x, y, &px[1], &py[1]),
          "Vag2xy of the locator");
  Require(SameOrBothNot(px[0], px[1]) && SameOrBothNot(py[0], py[1]), "the locator's map point");
  double z[2] = {7, 7};
  Require(line->Vagprofz(x, &z[0]) == locator.Vagprofz(x, &z[1]) && SameOrBothNot(z[0], z[1]),
          "Vagprofz of the locator");
}

}  // namespace

void Run(const Input& input) {
  const CString path = Put(L"LINE.VL", input.File());
  CVaglinje line;
  const int told = StatusTexts();
  if (line.Init(path) != 0) return;
  const std::vector<kovltype> points = line.Points();
  const size_t skipped = static_cast<size_t>(StatusTexts() - told);
  Require(LinesOf(path).size() == points.size() + skipped, "every line is a point or told");
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
