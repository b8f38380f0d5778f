// What a drawing consists of, and the same drawn with cairo alone.
#ifndef VELMORA_BENCH_REPORT_COUNTED_H_
#define VELMORA_BENCH_REPORT_COUNTED_H_

#include <array>
#include <vector>

#include "velmora/drawing/canvas.h"

namespace velmora::bench {

// Notes each primitive and its size: the corners of a path, the characters of a text.
class CountingCanvas final : public drawing::Canvas {
 public:
  enum Kind { kSheet, kLine, kRectangle, kCircle, kPath, kArcs, kDots, kText, kKinds };
  struct Primitive {
    Kind kind;
    size_t size;
  };

  void BeginSheet(std::string_view, double, double) override { Add(kSheet, 1); }
  void Line(drawing::SheetPoint, drawing::SheetPoint, const drawing::Style&) override { Add(kLine, 1); }
  void Rectangle(const drawing::SheetRect&, const drawing::Style&) override { Add(kRectangle, 1); }
  void Circle(drawing::SheetPoint, double, const drawing::Style&) override { Add(kCircle, 1); }
  void Path(std::span<const drawing::PathPoint> points, bool, const drawing::Style&) override;
  void Dots(std::span<const drawing::SheetPoint> centres, double, const drawing::Style&) override {
    Add(kDots, centres.size());
  }
  void Text(drawing::SheetPoint, std::string_view utf8, const drawing::TextFormat&,
            const drawing::Style&) override {
    Add(kText, utf8.size());
  }

  const std::vector<Primitive>& All() const { return all_; }
  size_t Count(Kind kind) const { return counts_[kind]; }

 private:
  void Add(Kind kind, size_t size) {
    all_.push_back({kind, size});
    ++counts_[kind];
  }

  std::vector<Primitive> all_;
  std::array<size_t, kKinds> counts_{};
};

// As many sheets of PDF with like primitives at made-up places, each stroked, filled or shown once, in one
// colour, as a program would that knows its places already. Returns the bytes of the file.
size_t DrawBare(const std::vector<CountingCanvas::Primitive>& primitives);

}  // namespace velmora::bench

#endif  // VELMORA_BENCH_REPORT_COUNTED_H_
