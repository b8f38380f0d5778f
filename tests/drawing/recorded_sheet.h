// A canvas that keeps what is drawn, and a road to draw.
#ifndef VELMORA_TESTS_DRAWING_RECORDED_SHEET_H_
#define VELMORA_TESTS_DRAWING_RECORDED_SHEET_H_

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/labels.h"
#include "velmora/drawing/plan_path.h"

namespace velmora::drawing {

struct Drawn {
  std::vector<PathPoint> points;
  Style style;
  std::string text = {};
  RotatedBox box = {};  // of the text's capitals and figures
};

struct RecordedSheet final : Canvas {
  std::vector<Drawn> all;
  std::string texts;                   // a line each
  double height = 0;                   // of the last sheet
  std::vector<size_t> first_of_sheet;  // in `all`

  void Add(std::vector<PathPoint> points, const Style& s) { all.push_back({std::move(points), s}); }
  void BeginSheet(std::string_view, double, double h) override {
    height = h;
    first_of_sheet.push_back(all.size());
  }
  void Line(SheetPoint a, SheetPoint b, const Style& s) override { Add({{a}, {b}}, s); }
  void Rectangle(const SheetRect& r, const Style& s) override {
    Add({{{r.x, r.y}}, {{r.Right(), r.Bottom()}}}, s);
  }
  void Circle(SheetPoint centre, double, const Style& s) override { Add({{centre}}, s); }
  void Path(std::span<const PathPoint> p, bool, const Style& s) override { Add({p.begin(), p.end()}, s); }
  void Dots(std::span<const SheetPoint> centres, double, const Style& s) override {
    for (const SheetPoint& centre : centres) Add({{centre}}, s);
  }
  void Text(SheetPoint at, std::string_view utf8, const TextFormat& format, const Style& s) override {
    RotatedBox box = TextBox(at, utf8, format.size, format.angle);
    if (format.anchor != TextAnchor::kMiddle)
      box.centre.x += format.anchor == TextAnchor::kStart ? box.half_width : -box.half_width;
    box.half_height = 0.4 * format.size;
    all.push_back({{{at}}, s, std::string(utf8), box});
    texts.append(utf8) += '\n';
  }
};

// Two straights, an arc to either side, a corner; and a profile with one curve over it.
inline PlotInput Road(size_t borings) {
  PlotInput input;
  input.name = "Väg 7";
  input.file = "road.vl";
  auto& plan = input.plan;
  plan = {{6652231.875, 653118.462, 0, 1200}, {6652260.4086, 653298.6164, -0.0963, 0},
          {6652252.4118, 653527.473, 0, 0},   {6652221.2052, 653662.6168, 0.208, 0},
          {6652272.0595, 653937.0691, 0, 0},  {6652250, 654080, 0, 0}};
  for (size_t i = 0; i + 1 < plan.size(); ++i)
    plan[i + 1].sek = plan[i].sek + PathSegment(plan[i], plan[i + 1]).Length();
  input.profile = {{13, 1200, 0, 1200}, {19, 1500, -0.01, 1500}, {18, 1700, 0, 1700}, {12, 2300, 0, 2300}};
  std::mt19937 random(7);
  const auto part = [&] { return static_cast<double>(random() % 10000) / 10000; };
  for (size_t i = 0; i < borings; ++i) {
    const double station = plan[i % 5].sek + part() * (plan[i % 5 + 1].sek - plan[i % 5].sek);
    const double offset = 50 * part() - 25;
    const PlanePoint p = PointOnSegment(plan[i % 5], plan[i % 5 + 1], station, offset);
    input.borings.push_back({"24V" + std::to_string(100 + i), p.v, p.h, 15 + part(), true, station, offset});
  }
  return input;
}

}  // namespace velmora::drawing

#endif  // VELMORA_TESTS_DRAWING_RECORDED_SHEET_H_
