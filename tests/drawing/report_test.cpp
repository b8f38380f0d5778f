// Reports of random roads: what their sheets show, and where.
#include "velmora/drawing/report.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <tuple>

#include "tests/drawing/recorded_sheet.h"
#include "velmora/drawing/overview_sheet.h"
#include "velmora/drawing/profile_sections.h"
#include "velmora/drawing/report_plan.h"
#include "velmora/drawing/strip_sheet.h"
#include "velmora/drawing/style.h"

namespace velmora::drawing {
namespace {

using Random = std::mt19937;

double Part(Random& random) { return static_cast<double>(random() % 10001) / 10000; }

// Straights and arcs to either side, hairpins among them; some roads fall, some have a jump of stations.
PlotInput RandomRoad(Random& random, size_t borings) {
  PlotInput road;
  road.name = "Väg " + std::to_string(random() % 1000);
  road.km_stations = random() % 2 == 0;
  road.max_offset = 60;
  const double turns = 3 * Part(random);
  double direction = 7 * Part(random);
  kovltype point = {6652000, 653000, 0, 1000 * Part(random)};
  for (size_t i = 1 + random() % 12; i > 0; --i) {
    const double chord = 5 + 400 * Part(random);
    point.bulge = random() % 2 == 0 ? 0 : std::tan(turns * (Part(random) - 0.5) / 4);
    road.plan.push_back(point);
    direction += turns * (Part(random) - 0.5);
    kovltype next = {point.x + chord * std::sin(direction), point.y + chord * std::cos(direction), 0, 0};
    next.sek = point.sek + PathSegment(point, next).Length() + (random() % 30 == 0 ? 900 : 0);
    point = next;
  }
  road.plan.push_back(point);
  for (double station = road.plan.front().sek - 50; station < point.sek; station += 40 + 100 * Part(random))
    road.profile.push_back({30 * Part(random), station, 0, station});
  if (random() % 5 == 0) road.profile.clear();
  for (size_t i = 0; i < borings; ++i) {
    const size_t k = random() % (road.plan.size() - 1);
    const PathSegment segment(road.plan[k], road.plan[k + 1]);
    const double part = Part(random);
    const PathPosition at = segment.At(part);
    const double offset = 80 * Part(random) - 40;
    PlotBoring boring = {"24V" + std::to_string(100 + i),
                         at.point.v - offset * at.direction.h,
                         at.point.h + offset * at.direction.v,
                         {},
                         true,
                         segment.A().sek + part * (segment.B().sek - segment.A().sek),
                         offset};
    if (random() % 10 != 0) boring.level = 30 * Part(random);
    if (random() % 10 == 0) boring.placed = false;
    boring.too_far = !boring.placed && random() % 2 == 0;
    road.borings.push_back(boring);
  }
  if (random() % 4 != 0) return road;
  for (kovltype& p : road.plan) p.sek = 5000 - p.sek;  // falling
  for (PlotBoring& b : road.borings) b.station = 5000 - b.station, b.offset = -b.offset;
  road.profile.clear();
  return road;
}

Report RandomReport(Random& random, size_t borings) {
  Report report;
  report.road = RandomRoad(random, borings);
  report.date = "2026-11-22";
  const CRitningsFormat formats;
  report.setup.format = formats.formater[random() % 9];
  const double kScales[] = {0, 200, 500, 1000, 2000, 750};
  if (const double scale = kScales[random() % 6]; scale > 0) report.setup.scale = scale;
  if (random() % 2 == 0) report.setup.height_scale = 100;
  report.table.columns = {{"Boring", "", -1}, {"Level", "m", 2}};
  for (const PlotBoring& b : report.road.borings)
    report.table.rows.push_back({b.id, b.level ? ReportCell(*b.level) : ReportCell()});
  return report;
}

TEST(Report, StripsCoverTheRoadToScaleWithinTheirPanels) {
  Random random(3);
  for (int round = 0; round < 300 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    const Report report = RandomReport(random, 0);
    const ReportPlan plan(report);
    ASSERT_FALSE(plan.strips.empty());
    const double overlap = plan.room.Metres(plan.room.overlap);
    double along = 0;
    for (size_t i = 0; i < plan.strips.size(); ++i) {
      const Strip& strip = plan.strips[i];
      EXPECT_NEAR(strip.from, along, 1e-6);
      along = strip.to;
      EXPECT_NEAR(strip.begin, std::max(0.0, strip.from - overlap), 1e-9);
      EXPECT_NEAR(strip.end, std::min(plan.course.Length(), strip.to + overlap), 1e-9);
      const PlanPath line(strip.line);
      EXPECT_NEAR(line.Length(), strip.end - strip.begin, 1e-6);
      for (const PlanePoint& p : line.Samples(1, 1000))
        EXPECT_TRUE(plan.plan_panel.Contains(plan.frames[i].ToSheet(p))) << "sheet of strip " << i;
      // The road runs to the right, and a length on the map has its length on the sheet.
      const SheetPoint a = plan.frames[i].ToSheet(InPlane(strip.line.front()));
      const SheetPoint b = plan.frames[i].ToSheet(InPlane(strip.line.back()));
      EXPECT_NEAR(std::hypot(a.x - b.x, a.y - b.y) * plan.room.scale / 1000,
                  Distance(InPlane(strip.line.front()), InPlane(strip.line.back())), 1e-6);
      EXPECT_GE(strip.line.back().sek, strip.line.front().sek);
    }
    EXPECT_NEAR(along, plan.course.Length(), 1e-6);
    EXPECT_TRUE(report.setup.scale || plan.strips.size() == plan.course.Stretches().size());
  }
}

TEST(Report, EveryBoringIsOnTheSheetsOfItsStationOrListed) {
  Random random(4);
  for (int round = 0; round < 150 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    const Report report = RandomReport(random, 40);
    const ReportPlan plan(report);
    std::set<const PlotBoring*> listed;
    for (const UnplacedBoring& unplaced : UnplacedBorings(plan)) listed.insert(unplaced.boring);
    for (const PlotBoring& boring : report.road.borings) {
      size_t sheets = 0;
      for (size_t i = 0; i < plan.strips.size(); ++i) {
        const bool there = std::count(plan.near[i].begin(), plan.near[i].end(), &boring) > 0;
        sheets += there ? 1 : 0;
        // A millimetre beside the road a station is the road's own.
        const bool on = boring.placed && plan.course.Stretches().size() == 1 &&
                        plan.strips[i].Stations().WidenedBy(-0.001).Contains(boring.station);
        EXPECT_TRUE(there || !on) << boring.id;
      }
      EXPECT_EQ(listed.contains(&boring), !boring.placed || sheets == 0) << boring.id;
    }
  }
}

TEST(Report, TextStaysInTheFrameAndEveryBoringIsDrawnOrNamed) {
  Random random(5);
  for (int round = 0; round < 60 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    const Report report = RandomReport(random, 1 + random() % 120);
    const ReportPlan plan(report);
    RecordedSheet whole;
    const ReportSummary summary = DrawReport(report, whole);
    EXPECT_EQ(summary.sheets, whole.first_of_sheet.size());
    EXPECT_EQ(SizeOfReport(report).sheets, summary.sheets);
    for (const Drawn& drawn : whole.all)
      EXPECT_TRUE(drawn.text.empty() || Contains(plan.layout.frame, drawn.box)) << drawn.text;
    for (size_t i = 0; i < plan.strips.size(); ++i) {
      RecordedSheet sheet;
      DrawStripSheet(sheet, plan, i);
      size_t borings = 0;
      for (const Drawn& drawn : sheet.all)
        borings += drawn.text.empty() && (drawn.style == kBoringDot || drawn.style == kStray);
      const auto counted = [&](const std::string& heading) -> size_t {
        const size_t at = sheet.texts.find(heading);
        return at == std::string::npos ? 0 : std::stoul(sheet.texts.substr(at + heading.size()));
      };
      EXPECT_EQ(borings + counted("Outside the plan ("), plan.near[i].size());
      if (counted("Not labelled: ") > 0 || counted("Outside the plan (") > 0) continue;
      for (const PlotBoring* boring : plan.near[i])
        EXPECT_NE(sheet.texts.find(boring->id), std::string::npos) << boring->id;
    }
  }
}

TEST(Report, LengthsAndArcsOnTheSheetAreExact) {
  Report report;
  report.road.plan = {{1000, 2000, 0, 0}, {1060, 2080, std::tan(kPi / 16), 100}, {1140, 2200, 0, 0}};
  report.road.plan[2].sek = 100 + PathSegment(report.road.plan[1], report.road.plan[2]).Length();
  report.setup.scale = 1000;
  const ReportPlan plan(report);
  RecordedSheet sheet;
  DrawStripSheet(sheet, plan, 0);
  for (const Drawn& drawn : sheet.all) {
    if (!(drawn.style == kRoad) || drawn.points.size() != 3) continue;
    const auto& [a, b, c] = std::tie(drawn.points[0], drawn.points[1], drawn.points[2]);
    EXPECT_NEAR(std::hypot(a.at.x - b.at.x, a.at.y - b.at.y), 100, 1e-9);
    EXPECT_NEAR(b.bulge, std::tan(kPi / 16), 1e-12);
    EXPECT_NEAR(std::hypot(b.at.x - c.at.x, b.at.y - c.at.y), std::hypot(80, 120), 1e-9);
    return;
  }
  FAIL() << "no road of two segments";
}

// The line within each section keeps to the height there is, and the sections cover it.
TEST(Report, ProfileSectionsHoldTheLine) {
  Random random(6);
  for (int round = 0; round < 2000 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    std::vector<ProfilePoint> line;
    double station = 0;
    for (size_t i = 2 + random() % 20; i > 0; --i) {
      line.push_back({station, 40 * Part(random)});
      station += random() % 6 == 0 ? 0 : 50 * Part(random);
    }
    const double room = 2 + 20 * Part(random);
    const auto sections = SectionsOf(line, room, 5);
    ASSERT_FALSE(sections.empty());
    EXPECT_EQ(sections.front().stations.low, line.front().station);
    EXPECT_EQ(sections.back().stations.high, line.back().station);
    for (size_t i = 1; i < sections.size(); ++i) {
      EXPECT_EQ(sections[i].stations.low, sections[i - 1].stations.high);
      EXPECT_GE(sections[i].stations.low - sections[i - 1].stations.low, 5 - 1e-9);
    }
    for (size_t i = 0; i < sections.size(); ++i) {
      EXPECT_LE(sections[i].levels.Size(), room + 1e-9);
      for (const auto& part : Clip(line, sections[i].stations, sections[i].levels))
        for (const ProfilePoint& p : part)
          EXPECT_TRUE(sections[i].levels.WidenedBy(1e-9).Contains(p.level) &&
                      sections[i].stations.WidenedBy(1e-9).Contains(p.station));
    }
  }
}

TEST(Report, SurvivesAnyNumbers) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  const double kPool[] = {0,   0,    1,     -1,   10,    100, 1234.5, 6652231.875, 1e-9, 1e-300,    -1,
                          1e9, -1e9, 9.9e8, 1e12, 1e300, nan, inf,    -inf,        50,   653118.462};
  Random random(12);
  for (int round = 0; round < 250 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    const auto any = [&] { return kPool[random() % std::size(kPool)]; };
    const auto number = [&] { return round % 3 != 0 ? any() : any() * 1e-3 + 50; };
    Report report = RandomReport(random, random() % 4);
    for (size_t i = random() % 4; i > 0; --i)
      report.road.plan.push_back({number(), number(), any(), number()});
    if (random() % 2 == 0)
      std::erase_if(report.road.plan, [&](const kovltype&) { return random() % 2 == 0; });
    for (size_t i = random() % 3; i > 0; --i)
      report.road.profile.push_back({number(), number(), any(), number()});
    for (PlotBoring& b : report.road.borings) (random() % 2 == 0 ? b.station : b.northing) = number();
    if (random() % 3 == 0) report.setup.scale = any();
    if (random() % 3 == 0) report.setup.height_scale = any();
    if (random() % 5 == 0) report.setup.first_station = any();
    if (random() % 5 == 0) report.setup.last_station = any();
    if (random() % 5 == 0) report.setup.format.ramBredd = any();
    report.road.name = std::string(random() % 2 == 0 ? 3 : 100000, 'W');
    report.setup.decimals = static_cast<int>(random() % 20) - 5;
    if (SizeOfReport(report).sheets > 60) continue;
    RecordedSheet sheet;
    DrawReport(report, sheet);
    const ReportPlan plan(report);
    for (const Drawn& drawn : sheet.all)
      for (const PathPoint& p : drawn.points)
        EXPECT_TRUE(std::fabs(p.at.x) < 1300 && std::fabs(p.at.y) < 1300 && std::isfinite(p.bulge))
            << p.at.x << " " << p.at.y << " " << drawn.style.layer << " " << drawn.text;
  }
}

}  // namespace
}  // namespace velmora::drawing
