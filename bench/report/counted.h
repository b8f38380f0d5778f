// What a drawing consists of, and the same drawn with cairo alone.
#ifndef VELMORA_BENCH_REPORT_COUNTED_H_
#define VELMORA_BENCH_REPORT_COUNTED_H_

#include <array>
#include <string>
#include <vector>

#include "velmora/drawing/canvas.h"

namespace velmora::bench {

// Notes each primitive with its places.
class CountingCanvas final : public drawing::Canvas {
 public:
  enum Kind { kSheet, kLine, kRectangle, kCircle, kPath, kDots, kText, kKinds };
  struct Primitive {
    Kind kind;
    std::vector<drawing::PathPoint> points;
    double size = 0;  // of a circle, dots or a text
    std::string text = {};
  };

  void BeginSheet(std::string_view, double width, double height) override {
    Add({kSheet, {{{width, height}}}});
  }
  void Line(drawing::SheetPoint a, drawing::SheetPoint b, const drawing::Style&) override {
    Add({kLine, {{a}, {b}}});
  }
  void Rectangle(const drawing::SheetRect& r, const drawing::Style&) override {
    Add({kRectangle, {{{r.x, r.y}}, {{r.width, r.height}}}});
  }
  void Circle(drawing::SheetPoint centre, double radius, const drawing::Style&) override {
    Add({kCircle, {{centre}}, radius});
  }
  void Path(std::span<const drawing::PathPoint> points, bool, const drawing::Style&) override {
    Add({kPath, {points.begin(), points.end()}});
  }
  void Dots(std::span<const drawing::SheetPoint> centres, double radius, const drawing::Style&) override;
  void Text(drawing::SheetPoint at, std::string_view utf8, const drawing::TextFormat& format,
            const drawing::Style&) override {
    Add({kText, {{at}}, format.size, std::string(utf8)});
  }

  const std::vector<Primitive>& All() const { return all_; }
  size_t Count(Kind kind) const { return counts_[kind]; }

 private:
  void Add(Primitive primitive) {
    ++counts_[primitive.kind];
    all_.push_back(std::move(primitive));
  }

  std::vector<Primitive> all_;
  std::array<size_t, kKinds> counts_{};
};

// The sheets as PDF, each primitive stroked or shown once in one colour and width, arcs as arcs of a fixed
// radius: what a program does that knows all places already. Returns the bytes of the file.
size_t DrawBare(const std::vector<CountingCanvas::Primitive>& primitives);

}  // namespace velmora::bench

#endif  // VELMORA_BENCH_REPORT_COUNTED_H_
