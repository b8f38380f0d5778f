#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "velmora/alignment/geometry.h"
#include "velmora/drawing/drawing.h"
#include "velmora/drawing/labels.h"
#include "velmora/drawing/plan_frame.h"
#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/profile_line.h"
#include "velmora/drawing/scale.h"
#include "velmora/drawing/svg.h"

namespace velmora::cli::plot {
namespace {

using namespace drawing;

// Two straights, an arc to either side, a corner; and a profile with one curve over it.
std::vector<kovltype> Plan() {
  std::vector<kovltype> plan = {{6652231.875, 653118.462, 0, 1200}, {6652260.4086, 653298.6164, -0.0963, 0},
                                {6652252.4118, 653527.473, 0, 0},   {6652221.2052, 653662.6168, 0.208, 0},
                                {6652272.0595, 653937.0691, 0, 0},  {6652250, 654080, 0, 0}};
  for (size_t i = 0; i + 1 < plan.size(); ++i) {
    plan[i + 1].sek = plan[i].sek + PathSegment(plan[i], plan[i + 1]).Length();
  }
  return plan;
}

PlotBoring Boring(const std::string& id, const std::vector<kovltype>& plan, size_t segment, double part,
                  double offset) {
  const kovltype& a = plan[segment];
  const kovltype& b = plan[segment + 1];
  const double station = a.sek + part * (b.sek - a.sek);
  const PlanePoint p = PointOnSegment(a, b, station, offset);
  return {id, p.v, p.h, 15.0 + part, true, station, offset};
}

PlotInput Road(size_t borings) {
  PlotInput input;
  input.name = "Väg 7";
  input.file = "road.vl";
  input.plan = Plan();
  input.profile = {{13, 1200, 0, 1200}, {19, 1500, -0.01, 1500}, {18, 1700, 0, 1700}, {12, 2300, 0, 2300}};
  std::mt19937 random(7);
  std::uniform_real_distribution<double> part(0, 1);
  for (size_t i = 0; i < borings; ++i) {
    input.borings.push_back(
        Boring("24V" + std::to_string(100 + i), input.plan, i % 5, part(random), 50 * part(random) - 25));
  }
  return input;
}

struct Element {
  std::string name;
  std::map<std::string, std::string> attributes;
  std::string text;

  double Number(const std::string& attribute) const {
    const auto at = attributes.find(attribute);
    return at == attributes.end() ? 0 : std::stod(at->second);
  }
};

// Behind the next `mark` of a text that is taken off its start; the test fails where there is none.
std::string Take(std::string_view* rest, char mark) {
  const size_t at = rest->find(mark);
  EXPECT_NE(at, std::string_view::npos) << "no " << mark << " in " << rest->substr(0, 100);
  const std::string taken(rest->substr(0, at));
  rest->remove_prefix(std::min(taken.size() + 1, rest->size()));
  return taken;
}

// Reads the drawing as XML, failing the test where it is not well-formed; elements in order of their end.
std::vector<Element> Read(const std::string& svg) {
  std::vector<Element> open;
  std::vector<Element> done;
  std::string_view rest = svg;
  Take(&rest, '\n');  // the declaration
  while (rest.find('<') != std::string_view::npos) {
    std::string_view text = rest.substr(0, rest.find('<'));
    EXPECT_EQ(text.find('>'), std::string::npos) << text;
    if (!open.empty()) open.back().text += text;
    while (text.find('&') != std::string_view::npos) {
      Take(&text, '&');
      EXPECT_TRUE(std::set<std::string>({"amp", "lt", "gt", "quot", "#39"}).contains(Take(&text, ';')));
    }
    Take(&rest, '<');
    std::string inside = Take(&rest, '>');
    if (inside.starts_with('/')) {
      EXPECT_TRUE(!open.empty() && open.back().name == inside.substr(1)) << inside;
      if (open.empty()) break;
      done.push_back(open.back());
      open.pop_back();
      continue;
    }
    const bool empty = inside.ends_with('/');
    if (empty) inside.pop_back();
    std::string_view attributes = inside;
    Element element{std::string(attributes.substr(0, attributes.find(' '))), {}, {}};
    attributes.remove_prefix(element.name.size());
    while (!attributes.empty()) {
      const std::string name = Take(&attributes, '=').substr(1);
      EXPECT_EQ(Take(&attributes, '"'), "");
      element.attributes[name] = Take(&attributes, '"');
    }
    (empty ? done : open).push_back(element);
  }
  EXPECT_TRUE(open.empty());
  return done;
}

std::string Texts(const std::vector<Element>& elements) {
  std::string all;
  for (const Element& e : elements) {
    if (e.name == "text") all += e.text + "\n";
  }
  return all;
}

// The box of a text element, from its attributes alone.
Box BoxOf(const Element& e) {
  const double size = e.Number("font-size");
  const auto turned = e.attributes.find("transform");
  const double angle = turned == e.attributes.end() ? 0 : std::stod(turned->second.substr(7));
  Box box = TextBox({e.Number("x"), e.Number("y") - 0.36 * size}, e.text, size, angle);
  const auto anchor = e.attributes.find("text-anchor");
  if (anchor == e.attributes.end()) box.centre.x += box.half_width;
  if (anchor != e.attributes.end() && anchor->second == "end") box.centre.x -= box.half_width;
  box.half_height = 0.4 * size;  // capitals and figures
  return box;
}

void ExpectTextsApart(const std::string& svg) {
  std::vector<Element> texts = Read(svg);
  std::erase_if(texts, [](const Element& e) { return e.name != "text"; });
  const Box sheet = {{210, 148.5}, 202, 140.5};
  for (size_t i = 0; i < texts.size(); ++i) {
    EXPECT_TRUE(Contains(sheet, BoxOf(texts[i]))) << texts[i].text << " leaves the sheet";
    for (size_t k = 0; k < i; ++k)
      EXPECT_FALSE(Overlap(BoxOf(texts[i]), BoxOf(texts[k]))) << texts[i].text << " on " << texts[k].text;
  }
}

TEST(Plot, NoTextCoversAnother) {
  for (const size_t borings : std::initializer_list<size_t>{0, 20, 90, 150, 151}) {
    SCOPED_TRACE(borings);
    PlotInput input = Road(borings);
    const std::string svg = DrawAlignment(input);
    ExpectTextsApart(svg);
    for (size_t i = 0; i < borings && borings == 20; ++i)  // named in plan and profile
      EXPECT_NE(svg.find(input.borings[i].id), svg.rfind(input.borings[i].id)) << input.borings[i].id;
    input.km_stations = true;
    input.profile.clear();
    ExpectTextsApart(DrawAlignment(input));
  }
}

// An arc is drawn with the library's radius, from point to point, and to the side its bulge says.
TEST(Plot, ArcsAreTheLibrarys) {
  for (const double bulge : {-0.0963, 0.0963}) {
    PlotInput input = Road(0);
    input.plan[1].bulge = bulge;
    const auto elements = Read(DrawAlignment(input));
    const std::string texts = Texts(elements);
    const double millimetres = 1000 / std::stod(texts.substr(texts.find("Plan 1:") + 7));
    std::string path;
    for (const Element& e : elements)
      if (e.name == "path" && e.attributes.at("d").find('A') != std::string::npos)
        path = e.attributes.at("d");
    // M x y L x y A radius radius turn large clockwise x y ...
    std::replace_if(
        path.begin(), path.end(), [](char c) { return std::isalpha(c) != 0 || c == ','; }, ' ');
    std::istringstream numbers(path);
    double x[11] = {};
    for (double& number : x) numbers >> number;
    const kovltype* plan = input.plan.data();
    EXPECT_NEAR(x[4], ArcFromBulge(InPlane(plan[1]), InPlane(plan[2]), bulge).radius * millimetres, 0.001);
    EXPECT_EQ(x[7], 0);
    EXPECT_EQ(x[8], bulge < 0 ? 1 : 0);
    for (const size_t point : std::initializer_list<size_t>{1, 2}) {  // north is up on this sheet
      const double* at = point == 1 ? &x[2] : &x[9];
      EXPECT_NEAR(at[0] - x[0], (plan[point].y - plan[0].y) * millimetres, 0.002);
      EXPECT_NEAR(x[1] - at[1], (plan[point].x - plan[0].x) * millimetres, 0.002);
    }
  }
}

TEST(Plot, HostileNamesAreText) {
  PlotInput input = Road(3);
  input.name = "</title><script>alert(1)</script>";
  input.file = "a&b\"'\x01\xFF.vl";
  input.borings[0].id = "<b>&amp;";
  input.borings[1].id =
      "\xE2\x80\xAE"
      "evil\n";
  input.borings[2].id = std::string(100000, 'W');
  const std::string svg = DrawAlignment(input);
  const auto elements = Read(svg);
  EXPECT_EQ(svg.find("<script"), std::string::npos);
  EXPECT_NE(Texts(elements).find("&lt;b&gt;&amp;amp;"), std::string::npos);
  EXPECT_NE(Texts(elements).find("a&amp;b&quot;&#39;\xEF\xBF\xBD\xEF\xBF\xBD.vl"), std::string::npos);
  EXPECT_EQ(svg.find("\xE2\x80\xAE"), std::string::npos);
  EXPECT_LT(svg.size(), 100000u);
}

// Whatever the numbers: well-formed, every one of them finite and near the sheet, and no flood of ticks.
TEST(Plot, SurvivesAnyNumbers) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  const double kPool[] = {0,   0,    1,     -1,   10,    100, 1234.5, 6652231.875, 1e-9, 1e-300,
                          1e9, -1e9, 9.9e8, 1e12, 1e308, nan, inf,    -inf,        50,   653118.462};
  const double kBulges[] = {0, 0, 0.1, -0.1, 1, -1, 3, -3, 1e3, 1e-6, 1.1e-6, 1e6, -1e300, nan, inf};
  std::mt19937 random(11);
  const auto pick = [&](const auto& pool) { return pool[random() % std::size(pool)]; };
  for (int round = 0; round < 600; ++round) {
    PlotInput input;
    input.km_stations = round % 2 == 0;
    const bool wild = round % 3 != 0;
    const auto number = [&] { return wild ? pick(kPool) : pick(kPool) * 1e-3 + 50; };
    for (size_t i = random() % 6; i > 0; --i)
      input.plan.push_back({number(), number(), pick(kBulges), number()});
    for (size_t i = random() % 5; i > 0; --i) {
      const double station = number();
      input.profile.push_back({number(), station, pick(kBulges), random() % 2 == 0 ? station : number()});
    }
    for (size_t i = random() % 4; i > 0; --i)
      input.borings.push_back({"b", number(), number(), number(), random() % 2 == 0, number(), number()});
    SCOPED_TRACE(round);
    const std::string svg = DrawAlignment(input);
    EXPECT_LT(svg.size(), 1500000u);
    EXPECT_EQ(svg.find("nan"), std::string::npos);
    EXPECT_EQ(svg.find("inf"), std::string::npos);
    for (const Element& e : Read(svg)) {
      if (e.name != "line" && e.name != "circle" && e.name != "text") continue;
      for (const char* name : {"x", "y", "x1", "y1", "x2", "y2", "cx", "cy"})
        EXPECT_NEAR(e.Number(name), 210, 211) << e.name << " " << name;
    }
    if (HasFailure()) return;
  }
}

TEST(Plot, NothingFloodsTheSheet) {
  PlotInput jumps = Road(0);
  for (size_t i = 0; i < jumps.plan.size(); ++i) jumps.plan[i].sek = i % 2 == 0 ? -9e8 : 9e8;
  const std::string ticks = DrawAlignment(jumps);
  EXPECT_LT(std::count(ticks.begin(), ticks.end(), '\n'), 12000);
  const std::string dots = DrawAlignment(Road(20000));
  EXPECT_EQ(dots.find("24V1"), std::string::npos);
  EXPECT_LT(dots.size(), 1500000u);
  EXPECT_NE(dots.find("Too many borings for labels"), std::string::npos);
}

TEST(Plot, SaysWhatItLeavesOut) {
  PlotInput input = Road(2);
  input.borings[0].northing += 50000;
  *input.borings[1].level = 90000;
  input.plan.push_back({std::nan(""), 0, 0, 0});
  const std::string texts = Texts(Read(DrawAlignment(input)));
  // The stray boring does not shrink the plan.
  for (const char* said : {"Plan 1:3000", "1 boring lies outside the plan",
                           "1 boring lies outside the profile", "1 point without usable numbers left out"})
    EXPECT_NE(texts.find(said), std::string::npos) << said;
  EXPECT_NE(DrawAlignment({}).find("Nothing to draw"), std::string::npos);
}

TEST(PlanPath, NearestIsTheFoot) {
  const std::vector<kovltype> plan = Plan();
  const PlanPath path(plan);
  for (size_t segment = 0; segment + 1 < plan.size(); ++segment) {
    for (const double offset : {-12.5, 0.0, 8.25}) {
      const PlotBoring b = Boring("", plan, segment, 0.4, offset);
      const auto foot = path.Nearest({b.easting, b.northing});
      ASSERT_TRUE(foot);
      EXPECT_NEAR(Distance(*foot, {b.easting, b.northing}), std::fabs(offset), 1e-6);
      EXPECT_NEAR(Distance(*foot, PointOnSegment(plan[segment], plan[segment + 1], b.station, 0)), 0, 1e-6);
    }
  }
}

TEST(PlanPath, MoreThanAHalfCircleRunsAsItsBulgeSays) {
  // Three quarters of a circle around (0, 0), counter-clockwise from east to south.
  const PathSegment arc({0, 10, std::tan(3 * kPi / 8), 0}, {-10, 0, 0, 47});
  EXPECT_NEAR(arc.Length(), 15 * kPi, 1e-9);
  EXPECT_NEAR(arc.At(1 / 3.0).point.v, 10, 1e-9);   // north
  EXPECT_NEAR(arc.At(2 / 3.0).point.h, -10, 1e-9);  // west
  EXPECT_NEAR(arc.At(0).direction.v, 1, 1e-9);
}

TEST(PlanFrame, HoldsAllPointsAndTurnsOnlyForALot) {
  const Panel panel = {10, 20, 300, 100};
  std::mt19937 random(3);
  std::uniform_real_distribution<double> any(-500, 500);
  for (const double direction : {0.0, 20.0, 80.0, -60.0, 90.0}) {
    SCOPED_TRACE(direction);
    const double c = std::cos(direction * kPi / 180);
    const double s = std::sin(direction * kPi / 180);
    std::vector<PlanePoint> points;
    for (int i = 0; i < 50; ++i) {
      const double along = 4 * any(random);
      const double across = any(random) / 5;
      points.push_back({6e5 + c * along - s * across, 6e6 + s * along + c * across});
    }
    const PlanFrame frame(ConvexHull(points), panel);
    for (const PlanePoint& p : points) {
      EXPECT_TRUE(panel.Inset(-1e-6).Holds(frame.ToSheet(p)));
      EXPECT_NEAR(Distance(frame.FromSheet(frame.ToSheet(p)), p), 0, 1e-5);
    }
    const SheetPoint north = frame.Direction({0, 1});
    EXPECT_LE(north.y, 1e-12);  // never down
    EXPECT_TRUE(direction != 0 || north.y == -1);
    EXPECT_TRUE(direction != 90 || std::fabs(north.x) > 0.9);
  }
}

TEST(ProfileLine, SamplesLieOnTheLibrarysLine) {
  const ProfileLine line(Road(0).profile);
  for (const ProfilePlace& place : line.Samples(5)) {
    const auto level = line.LevelAt(place.station);
    EXPECT_EQ(level.has_value(), place.station < 2300);
    EXPECT_NEAR(level.value_or(place.level), place.level, 1e-9);
  }
  EXPECT_FALSE(line.LevelAt(1199.9));
  EXPECT_GT(*line.LevelAt(1600), 18.5 + 0.9);  // bulge -0.01 on 200 m: a metre above the chord
}

TEST(Labels, BoxesOverlap) {
  const Box flat = {{0, 0}, 10, 1};
  EXPECT_TRUE(Overlap(flat, {{15, 0}, 6, 1}));
  EXPECT_FALSE(Overlap(flat, {{15, 0}, 5, 1}));        // they touch
  EXPECT_FALSE(Overlap(flat, {{14, -2}, 10, 1, 45}));  // apart, though upright boxes would meet
  EXPECT_TRUE(Overlap(flat, {{10, -2}, 10, 1, 45}));
  EXPECT_TRUE(Overlap(flat, {{0, 0}, 1, 10}));  // a cross: no corner inside the other
  EXPECT_EQ(FitText("24V001", 2, 100), "24V001");
  EXPECT_EQ(FitText("ååååååååå", 2, 8.5), "åååå…");
}

TEST(Scale, NumbersAreRound) {
  const struct {
    double least;
    double scale;
    double step;
  } kCases[] = {{1e-9, 100, 1e-9},   {100, 100, 100},      {101, 125, 200},    {1000.0000000001, 1000, 1000},
                {5200, 6000, 10000}, {9000, 10000, 10000}, {1.3e6, 1.5e6, 2e6}};
  for (const auto& c : kCases) {
    EXPECT_NEAR(NiceScale(c.least), c.scale, c.scale * 1e-9) << c.least;
    EXPECT_NEAR(NiceStep(c.least), c.step, c.step * 1e-9) << c.least;
  }
  EXPECT_EQ(Ticks(-25, 45, 20), (std::vector<double>{-20, 0, 20, 40}));
  EXPECT_TRUE(Ticks(0, 1e9, 1e-9).empty());
  EXPECT_EQ(ScaleText(200000), "1:200000");
  EXPECT_EQ(ScaleText(187.5), "1:187.5");
  EXPECT_EQ(SvgNumber(-0.0004), "0");
  EXPECT_EQ(SvgNumber(std::nan("")), "0");
}

}  // namespace
}  // namespace velmora::cli::plot
