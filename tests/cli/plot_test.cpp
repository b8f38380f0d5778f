#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <sstream>

#include "cli/plot/drawing.h"
#include "cli/plot/labels.h"
#include "cli/plot/plan_frame.h"
#include "cli/plot/plan_path.h"
#include "cli/plot/profile_line.h"
#include "cli/plot/scale.h"
#include "cli/plot/svg.h"
#include "velmora/alignment/geometry.h"

namespace velmora::cli::plot {
namespace {

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

bool IsEntity(const std::string& text) {
  return text == "&amp" || text == "&lt" || text == "&gt" || text == "&quot" || text == "&#39";
}

// Reads the drawing as XML, failing the test where it is not well-formed; elements in order of their end.
std::vector<Element> Read(const std::string& svg) {
  std::vector<Element> open;
  std::vector<Element> done;
  size_t at = svg.find('\n') + 1;  // behind the declaration
  while (at < svg.size()) {
    const size_t tag = svg.find('<', at);
    const std::string text = svg.substr(at, tag - at);
    EXPECT_EQ(text.find('>'), std::string::npos) << text;
    for (size_t mark = text.find('&'); mark != std::string::npos; mark = text.find('&', mark + 1)) {
      EXPECT_TRUE(IsEntity(text.substr(mark, text.find(';', mark) - mark))) << text;
    }
    if (!open.empty()) open.back().text += text;
    if (tag == std::string::npos) break;
    const size_t end = svg.find('>', tag);
    if (end == std::string::npos) {
      ADD_FAILURE() << "an open tag";
      break;
    }
    std::string inside = svg.substr(tag + 1, end - tag - 1);
    at = end + 1;
    if (inside.front() == '/') {
      if (open.empty() || open.back().name != inside.substr(1)) {
        ADD_FAILURE() << "</" << inside.substr(1) << "> closes nothing";
        break;
      }
      done.push_back(open.back());
      open.pop_back();
      continue;
    }
    const bool empty = inside.back() == '/';
    if (empty) inside.pop_back();
    Element element;
    size_t next = std::min(inside.find(' '), inside.size());
    element.name = inside.substr(0, next);
    while (next < inside.size()) {
      const size_t equals = inside.find("=\"", next);
      const size_t quote = equals == std::string::npos ? equals : inside.find('"', equals + 2);
      if (quote == std::string::npos) {
        ADD_FAILURE() << "attributes: " << inside;
        break;
      }
      element.attributes[inside.substr(next + 1, equals - next - 1)] =
          inside.substr(equals + 2, quote - equals - 2);
      next = quote + 1;
    }
    (empty ? done : open).push_back(element);
  }
  EXPECT_TRUE(open.empty()) << "unclosed: " << open.back().name;
  return done;
}

std::string Texts(const std::vector<Element>& elements) {
  std::string all;
  for (const Element& e : elements) {
    if (e.name == "text") all += e.text + "\n";
  }
  return all;
}

// One command of a path's data with its numbers.
struct Step {
  char command;
  std::vector<double> numbers;
};

std::vector<Step> Steps(const std::string& data) {
  std::vector<Step> steps;
  size_t at = 0;
  while (at < data.size()) {
    const size_t next = std::min(data.find_first_of("MLAZ", at + 1), data.size());
    std::istringstream numbers(data.substr(at + 1, next - at - 1));
    Step step{data[at], {}};
    for (double number = 0; numbers >> number;) step.numbers.push_back(number);
    steps.push_back(step);
    at = next;
  }
  return steps;
}

// The box of a text element, from its attributes alone.
Box BoxOf(const Element& e) {
  const double size = e.Number("font-size");
  SheetPoint at = {e.Number("x"), e.Number("y") - 0.36 * size};
  double angle = 0;
  const auto turned = e.attributes.find("transform");
  if (turned != e.attributes.end()) angle = std::stod(turned->second.substr(7));
  Box box = TextBox(at, e.text, size, angle);
  const auto anchor = e.attributes.find("text-anchor");
  if (anchor == e.attributes.end()) box.centre.x += box.half_width;
  if (anchor != e.attributes.end() && anchor->second == "end") box.centre.x -= box.half_width;
  box.half_height = 0.4 * size;  // capitals and figures
  return box;
}

void ExpectTextsApart(const std::string& svg) {
  std::vector<Element> texts;
  for (const Element& e : Read(svg)) {
    if (e.name == "text") texts.push_back(e);
  }
  const Box sheet = {{210, 148.5}, 202, 140.5};
  for (size_t i = 0; i < texts.size(); ++i) {
    EXPECT_TRUE(Contains(sheet, BoxOf(texts[i]))) << texts[i].text << " leaves the sheet";
    for (size_t k = 0; k < i; ++k) {
      EXPECT_FALSE(Overlap(BoxOf(texts[i]), BoxOf(texts[k]))) << texts[i].text << " on " << texts[k].text;
    }
  }
}

TEST(Plot, NoTextCoversAnother) {
  for (const size_t borings : {0, 20, 90, 150, 151}) {
    SCOPED_TRACE(borings);
    PlotInput input = Road(borings);
    ExpectTextsApart(DrawAlignment(input));
    input.km_stations = true;
    input.profile.clear();
    ExpectTextsApart(DrawAlignment(input));
  }
}

TEST(Plot, EveryBoringIsNamedInPlanAndProfile) {
  const PlotInput input = Road(20);
  const std::string texts = Texts(Read(DrawAlignment(input)));
  for (const PlotBoring& boring : input.borings) {
    const size_t first = texts.find(boring.id);
    ASSERT_NE(first, std::string::npos) << boring.id;
    EXPECT_NE(texts.find(boring.id, first + 1), std::string::npos) << boring.id;
  }
}

// The drawn arc passes where the library puts the middle of the segment, and has its radius.
TEST(Plot, ArcsAreTheLibrarys) {
  PlotInput input = Road(0);
  for (const bool clockwise_too : {true, false}) {
    if (!clockwise_too) input.plan[1].bulge = 0.0963;  // now bent to the other side
    const auto elements = Read(DrawAlignment(input));
    const std::string texts = Texts(elements);
    const double millimetres = 1000 / std::stod(texts.substr(texts.find("Plan 1:") + 7));
    std::vector<Step> steps;
    for (const Element& e : elements) {
      if (e.name == "path" && e.attributes.at("d").find('A') != std::string::npos)
        steps = Steps(e.attributes.at("d"));
    }
    ASSERT_EQ(steps.size(), input.plan.size());
    const SheetPoint origin = {steps[0].numbers[0], steps[0].numbers[1]};
    const auto on_sheet = [&](PlanePoint p) {  // north is up on this sheet
      return SheetPoint{origin.x + (p.h - input.plan[0].y) * millimetres,
                        origin.y - (p.v - input.plan[0].x) * millimetres};
    };
    for (const size_t segment : {1, 3}) {
      const kovltype& from = input.plan[segment];
      const kovltype& to = input.plan[segment + 1];
      const Step& step = steps[segment + 1];
      ASSERT_EQ(step.command, 'A');
      const double radius = step.numbers[0];
      EXPECT_NEAR(radius, ArcFromBulge(InPlane(from), InPlane(to), from.bulge).radius * millimetres, 0.001);
      const SheetPoint b = {step.numbers[5], step.numbers[6]};
      const SheetPoint c = on_sheet(InPlane(from));
      EXPECT_NEAR(b.x, on_sheet(InPlane(to)).x, 0.002);
      EXPECT_NEAR(b.y, on_sheet(InPlane(to)).y, 0.002);
      EXPECT_EQ(step.numbers[3], 0);
      // From the middle of the chord the small arc bulges to the left of its way when it runs clockwise.
      const double chord = std::hypot(b.x - c.x, b.y - c.y);
      const double sagitta = radius - std::sqrt(radius * radius - chord * chord / 4);
      const double side = step.numbers[4] == 1 ? 1 : -1;
      const SheetPoint middle = {(b.x + c.x) / 2 + side * sagitta * (b.y - c.y) / chord,
                                 (b.y + c.y) / 2 - side * sagitta * (b.x - c.x) / chord};
      const SheetPoint expected = on_sheet(PointOnSegment(from, to, (from.sek + to.sek) / 2, 0));
      EXPECT_NEAR(middle.x, expected.x, 0.01);
      EXPECT_NEAR(middle.y, expected.y, 0.01);
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
    for (size_t i = random() % 4; i > 0; --i) {
      input.borings.push_back({"b", number(), number(), number(), random() % 2 == 0, number(), number()});
    }
    SCOPED_TRACE(round);
    const std::string svg = DrawAlignment(input);
    EXPECT_LT(svg.size(), 1500000u);
    for (const Element& e : Read(svg)) {
      for (const auto& [name, value] : e.attributes) {
        EXPECT_EQ(value.find("nan"), std::string::npos) << e.name << " " << name;
        EXPECT_EQ(value.find("inf"), std::string::npos) << e.name << " " << name;
      }
      EXPECT_EQ(e.text.find("nan"), std::string::npos) << e.text;
      if (e.name != "line" && e.name != "circle" && e.name != "text") continue;
      for (const char* name : {"x", "y", "x1", "y1", "x2", "y2", "cx", "cy"}) {
        const double value = e.Number(name);
        EXPECT_TRUE(value >= -1 && value <= 421) << e.name << " " << name << " " << value;
      }
    }
    if (HasFailure()) return;
  }
}

TEST(Plot, JumpsOfStationDoNotFloodTheSheet) {
  PlotInput input = Road(0);
  for (size_t i = 0; i < input.plan.size(); ++i) input.plan[i].sek = i % 2 == 0 ? -9e8 : 9e8;
  const std::string svg = DrawAlignment(input);
  EXPECT_LT(std::count(svg.begin(), svg.end(), '\n'), 12000);
}

TEST(Plot, ManyBoringsAreDots) {
  const std::string svg = DrawAlignment(Road(20000));
  EXPECT_EQ(svg.find("24V1"), std::string::npos);
  EXPECT_LT(svg.size(), 1500000u);
  EXPECT_NE(svg.find("Too many borings for labels"), std::string::npos);
}

TEST(Plot, SaysWhatItLeavesOut) {
  PlotInput input = Road(2);
  input.borings[0].northing += 50000;
  *input.borings[1].level = 90000;
  input.plan.push_back({std::nan(""), 0, 0, 0});
  const std::string texts = Texts(Read(DrawAlignment(input)));
  EXPECT_NE(texts.find("Plan 1:3000"), std::string::npos) << texts;  // the stray boring does not shrink it
  EXPECT_NE(texts.find("1 boring lies outside the plan"), std::string::npos);
  EXPECT_NE(texts.find("1 boring lies outside the profile"), std::string::npos);
  EXPECT_NE(texts.find("1 point without usable numbers left out"), std::string::npos);
  EXPECT_NE(Texts(Read(DrawAlignment({}))).find("Nothing to draw"), std::string::npos);
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
    const SheetPoint a = frame.ToSheet({6e5, 6e6});
    const SheetPoint b = frame.ToSheet({6e5, 6e6 + 100});
    EXPECT_NEAR(b.x - a.x, north.x * frame.Millimetres(100), 1e-6);
    EXPECT_NEAR(b.y - a.y, north.y * frame.Millimetres(100), 1e-6);
    EXPECT_LE(north.y, 1e-12);  // never down
    if (direction == 0) {
      EXPECT_EQ(north.y, -1);
    }
    if (direction == 90) {
      EXPECT_GT(std::fabs(north.x), 0.9);
    }
  }
}

TEST(ProfileLine, SamplesLieOnTheLibrarysLine) {
  const std::vector<kovltype> points = Road(0).profile;
  const ProfileLine line(points);
  for (const ProfilePlace& place : line.Samples(5)) {
    const auto level = line.LevelAt(place.station);
    if (place.station < 2300) {
      ASSERT_TRUE(level);
      EXPECT_NEAR(*level, place.level, 1e-9);
    } else {
      EXPECT_FALSE(level);
    }
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
  EXPECT_EQ(Ticks(20, 20, 20), std::vector<double>{20});
  EXPECT_TRUE(Ticks(0, 1e9, 1e-9).empty());
  EXPECT_TRUE(Ticks(0, 10, 0).empty());
  EXPECT_EQ(ScaleText(200000), "1:200000");
  EXPECT_EQ(ScaleText(187.5), "1:187.5");
  EXPECT_EQ(SvgNumber(-0.0004), "0");
  EXPECT_EQ(SvgNumber(1.2504), "1.25");
  EXPECT_EQ(SvgNumber(std::nan("")), "0");
}

}  // namespace
}  // namespace velmora::cli::plot
