// Reports as PDF beside cairo alone: a report lays out its sheets, places the labels and draws; the peer
// draws as many like lines, arcs and texts on as many sheets at places that it need not look for. And how the
// time grows with the borings, beside n log n.
//
//   report_bench [--small] [--json FILE]
//
// Ours and the peer take turns in one process; each figure is the median of its rounds.
#include <cmath>
#include <cstdio>
#include <random>
#include <string>

#include "bench/measure.h"
#include "bench/report/counted.h"
#include "cli/report/cairo_canvas.h"
#include "velmora/alignment/geometry.h"
#include "velmora/drawing/report.h"

namespace velmora::bench {
namespace {

constexpr double kLength = 20'000;  // m
constexpr double kScale = 1000;

// Bends of 200 m, alternately to the right and to the left, between straights of 300 m.
std::vector<kovltype> Road() {
  constexpr double kStraight = 300;
  constexpr double kBend = 200;
  constexpr double kTurn = 0.4;  // radians
  std::vector<kovltype> plan;
  double direction = 0.2;  // from east
  double turn = -kTurn;
  kovltype at{6'652'000, 653'000, 0, 0};
  const auto advance = [&](double chord, double along, double station) {
    at.x += chord * std::sin(along);
    at.y += chord * std::cos(along);
    at.sek += station;
  };
  while (at.sek < kLength) {
    plan.push_back(at);
    advance(kStraight, direction, kStraight);
    plan.push_back(at);
    plan.back().bulge = std::tan(turn / 4);
    advance(2 * kBend / kTurn * std::sin(kTurn / 2), direction + turn / 2, kBend);
    direction += turn;
    turn = -turn;
  }
  plan.push_back(at);
  return plan;
}

drawing::Report MadeUp(size_t borings) {
  drawing::Report report;
  report.date = "2026-11-22";
  const CRitningsFormat formats;
  report.setup.format = formats.formater[formats.Format2Index(L"A3")];
  report.setup.scale = kScale;
  report.setup.height_scale = 100;
  drawing::PlotInput& road = report.road;
  road.name = "Väg 7";
  road.plan = Road();
  const auto level = [](double station) { return 20 + 8 * std::sin(station / 900); };
  for (double station = 0; station <= kLength; station += 100)
    road.profile.push_back({level(station), station, 0, station});
  report.table.columns = {{"Id", ""},          {"Northing", "m", 3}, {"Easting", "m", 3},
                          {"Station", "m", 3}, {"Offset", "m", 2},   {"Level", "m", 2}};
  std::mt19937 random(7);
  size_t segment = 0;
  for (size_t i = 0; i < borings; ++i) {
    const double station = kLength * (static_cast<double>(i) + 0.5) / static_cast<double>(borings);
    while (road.plan[segment + 1].sek < station) ++segment;
    const double offset = static_cast<double>(random() % 5000) / 100 - 25;
    const PlanePoint p = PointOnSegment(road.plan[segment], road.plan[segment + 1], station, offset);
    const std::string id = "24V" + std::to_string(1000 + i);
    const double height = level(station) - static_cast<double>(random() % 300) / 100;
    road.borings.push_back({id, p.v, p.h, height, true, station, offset});
    report.table.rows.push_back({id, p.v, p.h, station, offset, height});
  }
  return report;
}

void Pdf(const drawing::Report& report, size_t* bytes) {
  const auto canvas =
      cli::MakePdfCanvas({report.road.name, "", 0}, [&](std::string_view part) { *bytes += part.size(); });
  drawing::DrawReport(report, *canvas);
  canvas->Finish();
}

void BesideCairo(int rounds, Figures* figures) {
  const drawing::Report report = MadeUp(5000);
  CountingCanvas counted;
  drawing::DrawReport(report, counted);
  size_t ours = 0;
  size_t theirs = 0;
  const Pair seconds = TakeTurns(
      rounds, [&] { Pdf(report, &(ours = 0)); }, [&] { theirs = DrawBare(counted.All()); });
  using enum CountingCanvas::Kind;
  figures->Add({"5,000 borings on 20 km as PDF", seconds.ours * 1e3, seconds.theirs * 1e3, "ms",
                "cairo alone", seconds.ratio, seconds.noise});
  std::printf("  %zu sheets, %zu lines, %zu paths, %zu circles, %zu texts; %.1f and %.1f MB\n",
              counted.Count(kSheet), counted.Count(kLine), counted.Count(kPath), counted.Count(kCircle),
              counted.Count(kText), static_cast<double>(ours) / 1e6, static_cast<double>(theirs) / 1e6);
}

void Growth(int rounds, bool small) {
  double least = 0;  // seconds of the least count
  constexpr double kLeast = 1000;
  for (const double count : {kLeast, 1e4, 1e5}) {
    if (small && count > 1e4) break;
    const drawing::Report report = MadeUp(static_cast<size_t>(count));
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i)
      times.push_back(Seconds([&] {
        CountingCanvas canvas;
        drawing::DrawReport(report, canvas);
      }));
    const double seconds = Median(times);
    if (count == kLeast) least = seconds;
    const double expected = least * count * std::log(count) / (kLeast * std::log(kLeast));
    std::printf("  layout of %.0f borings: %.1f ms; %.1f would be n log n\n", count, seconds * 1e3,
                expected * 1e3);
  }
}

int Run(bool small, const std::string& json) {
  Figures figures;
  const int rounds = small ? 5 : 7;
  figures.Head("Reports of a road of 20 km at 1:1000");
  BesideCairo(rounds, &figures);
  Growth(rounds, small);
  return json.empty() || figures.WriteJson(json) ? 0 : 1;
}

}  // namespace
}  // namespace velmora::bench

int main(int argc, char** argv) {
  bool small = false;
  std::string json;
  if (!velmora::bench::ReadOptions(argc, argv, {{"--small", &small}}, {{"--json", &json}})) {
    std::fprintf(stderr, "report_bench [--small] [--json FILE]\n");
    return 2;
  }
  return velmora::bench::Run(small, json);
}
