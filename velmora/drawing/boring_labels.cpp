#include "velmora/drawing/boring_labels.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <utility>

#include "velmora/drawing/style.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {

std::string BoringKey::Number(const PlotBoring& boring) {
  const auto [at, added] = numbers_.try_emplace(&boring, numbers_.size() + 1);
  if (added) borings_.push_back(&boring);
  return NumberText(at->second);
}

std::string BoringKey::NumberText(size_t number) { return "(" + std::to_string(number) + ")"; }

bool BoringKey::IsNumberText(std::string_view id) {
  return id.size() > 2 && id.front() == '(' && id.back() == ')' &&
         id.find_first_not_of("0123456789", 1) == id.size() - 1;
}

namespace {

// Symbols by their places on the sheet, to be marked once each.
class NearSymbols {
 public:
  NearSymbols(std::span<const SheetPoint> symbols, double distance) : symbols_(symbols), distance_(distance) {
    for (size_t i = 0; i < symbols.size(); ++i)
      cells_[{CellOf(symbols[i].x), CellOf(symbols[i].y)}].push_back(i);
  }

  // Marks those closer to `at` than the distance.
  void MarkAround(SheetPoint at, std::vector<bool>* marks) {
    // A cell's diagonal is shorter than the distance, so a symbol marks all of its own cell.
    for (long row = CellOf(at.y - distance_); row <= CellOf(at.y + distance_); ++row) {
      for (long column = CellOf(at.x - distance_); column <= CellOf(at.x + distance_); ++column) {
        const auto cell = cells_.find({column, row});
        if (cell == cells_.end()) continue;
        std::erase_if(cell->second, [&](size_t i) {
          const bool near = std::hypot(symbols_[i].x - at.x, symbols_[i].y - at.y) < distance_;
          if (near) (*marks)[i] = true;
          return near;
        });
      }
    }
  }

 private:
  long CellOf(double mm) const { return static_cast<long>(std::floor(1.5 * mm / distance_)); }

  std::span<const SheetPoint> symbols_;
  double distance_;
  std::map<std::pair<long, long>, std::vector<size_t>> cells_;  // of those that are not marked
};

// Where symbols found no room for a label of one kind: others there will find none either.
class HopelessSpots {
 public:
  bool Is(SheetPoint at) const {
    const auto spot = failures_.find(SpotOf(at));
    return spot != failures_.end() && spot->second >= kTrials;
  }
  void Add(SheetPoint at) { ++failures_[SpotOf(at)]; }

 private:
  static constexpr double kSpot = 4;  // mm
  static constexpr int kTrials = 2;
  static std::pair<long, long> SpotOf(SheetPoint at) {
    return {static_cast<long>(std::floor(at.x / kSpot)), static_cast<long>(std::floor(at.y / kSpot))};
  }

  std::map<std::pair<long, long>, int> failures_;
};

}  // namespace

std::vector<std::optional<ChosenLabel>> ChooseLabels(
    Obstacles& obstacles, std::span<const SheetPoint> symbols,
    const std::function<LabelPlaces(size_t, LabelKind)>& places) {
  using Labels = std::vector<std::optional<ChosenLabel>>;
  const bool few = symbols.size() <= 500;
  const int rounds = few ? 12 : 4;
  constexpr double kAround = 14;  // mm
  std::optional<NearSymbols> near;
  std::vector<bool> close(symbols.size(), false);
  std::vector<size_t> order(symbols.size());
  std::iota(order.begin(), order.end(), size_t{0});
  if (!few)  // neighbours one after another, which the processor's caches are made for
    std::stable_sort(order.begin(), order.end(),
                     [&](size_t a, size_t b) { return symbols[a].x < symbols[b].x; });
  std::optional<std::pair<Labels, Obstacles>> best;
  std::ptrdiff_t least = 0;
  for (int round = 0; round < rounds; ++round) {
    Labels labels(symbols.size());
    Obstacles taken = obstacles;
    const auto place = [&](LabelKind kind, const auto& wanted) {
      HopelessSpots hopeless;
      for (const size_t i : order) {
        if (labels[i] || !wanted(i) || (!few && hopeless.Is(symbols[i]))) continue;
        if (const auto free = TakeFirst(taken, places(i, kind)))
          labels[i] = {kind, *free};
        else
          hopeless.Add(symbols[i]);
      }
    };
    place(LabelKind::kNumber, [&](size_t i) { return close[i]; });
    place(LabelKind::kName, [&](size_t i) { return !close[i]; });
    place(LabelKind::kNumber, [&](size_t i) { return !close[i]; });

    const auto without = std::count(labels.begin(), labels.end(), std::nullopt);
    if (!best || without < least) {
      best.emplace(labels, std::move(taken));
      least = without;
    }
    // Of many, one in a thousand is not worth another round.
    if (without <= (few ? 0 : static_cast<std::ptrdiff_t>(symbols.size() / 1000))) break;
    // Those without a label choose first next time, and around them numbers come before names.
    std::stable_partition(order.begin(), order.end(), [&](size_t i) { return !labels[i]; });
    if (!near) near.emplace(symbols, kAround);
    for (size_t i = 0; i < symbols.size(); ++i)
      if (!labels[i]) near->MarkAround(symbols[i], &close);
  }
  obstacles = std::move(best->second);
  return std::move(best->first);
}

std::string OffsetLabel(const PlotBoring& boring) {
  if (!boring.HasOffset() || !std::isfinite(boring.offset)) return "";
  const std::string text = FormatFixed(std::fabs(boring.offset), 2);
  if (text == "0.00") return text;
  return (boring.offset > 0 ? "H " : "V ") + text;
}

void DrawStray(Canvas& canvas, SheetPoint at, bool dot) {
  const double half = dot ? 1.4 * kManyDotsRadius : kBoringRadius;
  canvas.Rectangle({at.x - half, at.y - half, 2 * half, 2 * half}, kStray);
}

}  // namespace velmora::drawing
