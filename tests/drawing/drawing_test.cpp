// Drawings, on a canvas that keeps what is drawn and as SVG, and the table of sheet formats.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/drawing/recorded_sheet.h"
#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/format_sheet.h"
#include "velmora/drawing/labels.h"
#include "velmora/drawing/plan_frame.h"
#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/ritnings_format.h"
#include "velmora/drawing/scale.h"
#include "velmora/drawing/style.h"
#include "velmora/drawing/svg_canvas.h"

namespace velmora::drawing {
namespace {

RecordedSheet Drawing(const PlotInput& input) {
  RecordedSheet sheet;
  DrawAlignment(input, sheet);
  return sheet;
}

// Texts stay on the sheet and off one another; labels of the road and its borings also off their straight
// lines.
void ExpectReadable(const RecordedSheet& sheet) {
  for (const Drawn& a : sheet.all) {
    if (a.text.empty()) continue;
    EXPECT_TRUE(Contains({8, 8, 404, sheet.height - 16}, a.box)) << a.text;
    const bool label = a.style == kRoadText || a.style == kBoringText || a.style == kStationText;
    for (const Drawn& b : sheet.all) {
      EXPECT_FALSE(!b.text.empty() && &a < &b && Overlap(a.box, b.box)) << a.text << " on " << b.text;
      const bool line = b.style == kRoad || b.style == kBoringLine || b.style == kBoringLevel;
      for (size_t i = 0; label && line && i + 1 < b.points.size(); ++i)
        EXPECT_FALSE(b.points[i].bulge == 0 &&
                     Overlap(a.box, LineBox(b.points[i].at, b.points[i + 1].at, 0.1)))
            << a.text << " on a line";
    }
  }
}

// In plan and profile every boring has its name, or a number that the key explains, or is counted in the
// legend.
void ExpectComplete(const PlotInput& input, const RecordedSheet& sheet) {
  size_t labels = 0;
  std::set<std::string> used, explained;
  bool in_views = true;
  for (const Drawn& drawn : sheet.all) {
    in_views = in_views && drawn.text != "Road line";
    const bool number = drawn.text.starts_with("(");
    labels += in_views && (number || drawn.text.starts_with("24V"));
    if (number && drawn.style == kBoringText) (in_views ? used : explained).insert(drawn.text);
    if (!drawn.text.starts_with("Not labelled: ")) continue;
    for (size_t i = 14; i < drawn.text.size();
         i = drawn.text.find(", ", i) == std::string::npos ? drawn.text.size() : drawn.text.find(", ", i) + 2)
      labels += std::stoul(drawn.text.substr(i));
  }
  EXPECT_EQ(labels, input.borings.size() * (input.profile.empty() ? 1 : 2));
  EXPECT_EQ(used, explained);
}

TEST(AlignmentSheet, BoringsAreLabelledAndNoTextCoversAnotherOrALine) {
  for (const size_t borings : {0U, 20U, 90U, 150U, 151U, 300U}) {
    SCOPED_TRACE(borings);
    PlotInput input = Road(borings);
    if (borings == 90)
      for (PlotBoring& boring : input.borings) boring.id += std::string(40, 'W');
    for (const bool km : {false, true}) {
      input.km_stations = km;
      if (km) input.profile.clear();
      const RecordedSheet sheet = Drawing(input);
      ExpectReadable(sheet);
      ExpectComplete(input, sheet);
    }
  }
}

// Whatever the numbers: every coordinate is finite and near the sheet, and no flood of ticks.
TEST(AlignmentSheet, SurvivesAnyNumbers) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  const double kPool[] = {0,   0,    1,     -1,   10,    100, 1234.5, 6652231.875, 1e-9, 1e-300,
                          1e9, -1e9, 9.9e8, 1e12, 1e308, nan, inf,    -inf,        50,   653118.462};
  const double kBulges[] = {0, 0, 0.1, -0.1, 1, -1, 3, -3, 1e3, 1e-6, 1.1e-6, 1e6, -1e300, nan, inf};
  std::mt19937 random(11);
  const auto pick = [&](const auto& pool) { return pool[random() % std::size(pool)]; };
  for (int round = 0; round < 600 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    PlotInput input;
    input.km_stations = round % 2 == 0;
    const auto number = [&] { return round % 3 != 0 ? pick(kPool) : pick(kPool) * 1e-3 + 50; };
    for (size_t i = random() % 6; i > 0; --i)
      input.plan.push_back({number(), number(), pick(kBulges), number()});
    for (size_t i = random() % 5; i > 0; --i) {
      const double station = number();
      input.profile.push_back({number(), station, pick(kBulges), random() % 2 == 0 ? station : number()});
    }
    for (size_t i = random() % 4; i > 0; --i)
      input.borings.push_back({"b", number(), number(), number(), random() % 2 == 0, number(), number()});
    const RecordedSheet sheet = Drawing(input);
    EXPECT_LT(sheet.all.size(), 12000U);
    for (const Drawn& drawn : sheet.all) {
      EXPECT_FALSE(drawn.style == kArrowDark && drawn.points[0].at.y > drawn.points[2].at.y + 1e-9)
          << "north is down";
      for (const PathPoint& p : drawn.points)
        EXPECT_TRUE(std::fabs(p.at.x - 210) < 211 && std::fabs(p.at.y - 210) < 211 && std::isfinite(p.bulge))
            << p.at.x << " " << p.at.y << " " << drawn.text;
    }
  }
}

TEST(AlignmentSheet, NothingFloodsIt) {
  PlotInput jumps = Road(0);
  for (size_t i = 0; i < jumps.plan.size(); ++i) jumps.plan[i].sek = i % 2 == 0 ? -9e8 : 9e8;
  EXPECT_LT(Drawing(jumps).all.size(), 12000U);
  EXPECT_EQ(Drawing(Road(20000)).texts.find("24V1"), std::string::npos);
}

// The pictures in this folder are the expected ones. One that differs is left beside the test program.
TEST(Svg, PicturesAreAsExpected) {
  const auto expect = [](const char* name, const auto& draw) {
    SvgCanvas canvas;
    draw(canvas);
    const std::string picture = canvas.Finish();
    std::ifstream file(std::string(std::getenv("VELMORA_PICTURES")) + "/" + name, std::ios::binary);
    if (picture == std::string(std::istreambuf_iterator<char>(file), {})) return;
    std::ofstream(name, std::ios::binary) << picture;
    ADD_FAILURE() << name << " differs";
  };
  PlotInput road = Road(9);
  road.name = "</title>&\x01\xFF \xE2\x80\xAE\"Å\"";
  road.plan.push_back({std::nan(""), 0, 0, 0});
  road.borings[0].id = std::string(100000, 'W');
  road.borings[1].offset = 0.004;
  road.borings.push_back({"<stray>", 6652300, 653400, {}, false, 0, 0});
  road.borings.push_back({"outside", 6752300, 653400, 90000, true, 1300, 5});
  road.borings.push_back({"corner", 6652300, 653939, 14, true, road.plan[4].sek, -28});
  expect("road.svg", [&](Canvas& canvas) { DrawAlignment(road, canvas); });
  PlotInput turned = Road(151);
  for (kovltype& point : turned.plan) point = {point.y, point.x, -point.bulge, 3000 - point.sek};
  for (PlotBoring& b : turned.borings) std::swap(b.northing, b.easting);
  turned.profile.clear();
  turned.km_stations = true;
  expect("turned.svg", [&](Canvas& canvas) { DrawAlignment(turned, canvas); });
  expect("nothing.svg", [](Canvas& canvas) { DrawAlignment({}, canvas); });
  expect("formats.svg", [](Canvas& canvas) { DrawFormats(CRitningsFormat().formater, canvas); });
  expect("elements.svg", [](Canvas& canvas) {
    canvas.BeginSheet("Elements", 100, 50.5);
    const Style line = {.layer = "x", .line = 0x0A0B0C, .width = 0.5, .round = true, .dash = {2, 1}};
    const Style area = {.layer = "y", .fill = 0xFF8000};
    canvas.Path(std::vector<PathPoint>{{{20, 20}, 1.5}, {{24, 20}, -1}, {{24, 24}, 0}}, false, line);
    canvas.Path(std::vector<PathPoint>{{{40, 20}, 0}, {{44, 20}, 0}, {{44, 24}, 1}}, true, area);
    canvas.Circle({std::nan(""), 1e300}, 3, area);
    canvas.Line({0, 1}, {2.0004, -0.0001}, line);
    canvas.Line({0, 2}, {2, 2}, {.layer = "y", .line = 0x0A0B0C, .width = 0.5});
  });
}

TEST(PlanPath, MoreThanAHalfCircleRunsAsItsBulgeSays) {
  // Three quarters of a circle around (0, 0), counter-clockwise from east to south.
  const PathSegment arc({0, 10, std::tan(3 * kPi / 8), 0}, {-10, 0, 0, 47});
  EXPECT_NEAR(arc.Length(), 15 * kPi, 1e-9);
  EXPECT_NEAR(arc.At(1 / 3.0).point.v, 10, 1e-9);   // north
  EXPECT_NEAR(arc.At(2 / 3.0).point.h, -10, 1e-9);  // west
  EXPECT_NEAR(arc.At(0).direction.v, 1, 1e-9);
}

TEST(PlanFrame, RotatesAndBack) {
  const std::vector<PlanePoint> points = {{6e5, 6e6}, {6e5 + 40, 6e6 + 900}};
  const PlanFrame frame(points, {10, 20, 300, 100}, NiceScale);
  EXPECT_GT(std::fabs(frame.Direction({0, 1}).x), 0.9);
  for (const PlanePoint& p : points) EXPECT_NEAR(Distance(frame.FromSheet(frame.ToSheet(p)), p), 0, 1e-6);
}

TEST(Labels, BoxesOverlap) {
  const RotatedBox flat = {{0, 0}, 10, 1};
  EXPECT_TRUE(Overlap(flat, {{15, 0}, 6, 1}));
  EXPECT_FALSE(Overlap(flat, {{15, 0}, 5, 1}));        // they touch
  EXPECT_FALSE(Overlap(flat, {{14, -2}, 10, 1, 45}));  // apart, though upright boxes would meet
  EXPECT_TRUE(Overlap(flat, {{10, -2}, 10, 1, 45}));
  EXPECT_TRUE(Overlap(flat, {{0, 0}, 1, 10}));  // a cross: no corner inside the other
}

TEST(Scale, NumbersAreRound) {
  const struct {
    double least, scale, standard, step;
  } kCases[] = {{1e-9, 10, 10, 1e-9},       {100, 100, 100, 100},
                {101, 125, 200, 200},       {1000.0000000001, 1000, 1000, 1000},
                {210, 250, 250, 500},       {2600, 3000, 4000, 5000},
                {5200, 6000, 10000, 10000}, {9000, 10000, 10000, 10000},
                {1.3e6, 1.5e6, 2e6, 2e6}};
  for (const auto& c : kCases) {
    EXPECT_NEAR(NiceScale(c.least), c.scale, c.scale * 1e-9) << c.least;
    EXPECT_NEAR(StandardScale(c.least), c.standard, c.standard * 1e-9) << c.least;
    EXPECT_NEAR(NiceStep(c.least), c.step, c.step * 1e-9) << c.least;
  }
  EXPECT_EQ(Ticks({-25, 45}, 20), (std::vector<double>{-20, 0, 20, 40}));
  EXPECT_TRUE(Ticks({0, 1e9}, 1e-9).empty());
  EXPECT_TRUE(Ticks({1e9, 1e9 + 1e-9}, 1e-9).empty());
  EXPECT_EQ(ScaleText(187.5) + " " + ScaleText(200000), "1:187.5 1:200000");
}

TEST(RitningsFormat, ComparesWholeNamesOfTheFormatsInUseAndTakesTheLast) {
  const CRitningsFormat formats;  // the measures are in formats.svg
  for (int i = 0; i < formats.antal; ++i) EXPECT_EQ(formats.Format2Index(formats.formater[i].namn), i);
  for (const wchar_t* none : {L"a4", L"A", L"A4 ", L"", static_cast<const wchar_t*>(nullptr)})
    EXPECT_EQ(formats.Format2Index(none), -1);
  CRitningsFormat copy(formats);
  copy.formater[3].namn = L"A4";
  EXPECT_EQ(formats.Format2Index(L"A2"), 3);
  const std::pair<int, int> kFoundWithCount[] = {{9, 8}, {8, 3}, {3, -1}, {0, -1}, {-1, -1}, {1000, 8}};
  for (const auto& [count, found] : kFoundWithCount) {
    copy.antal = count;
    EXPECT_EQ(copy.Format2Index(CString(L"A4")), found) << count;
  }
}

}  // namespace
}  // namespace velmora::drawing
