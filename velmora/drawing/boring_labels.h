// How the borings of a sheet are named: by their identity where there is room, else by a number that the key
// table explains, so that no identity is ever cut.
#ifndef VELMORA_DRAWING_BORING_LABELS_H_
#define VELMORA_DRAWING_BORING_LABELS_H_

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/labels.h"

namespace velmora::drawing {

// Borings that have a number on the sheet, in its order.
class BoringKey {
 public:
  static constexpr size_t kAny = static_cast<size_t>(-1);
  explicit BoringKey(size_t most = kAny) : most_(most) {}

  // Whether the boring has a number or can get one.
  bool HasRoomFor(const PlotBoring& boring) const {
    return borings_.size() < most_ || numbers_.contains(&boring);
  }
  // Gives the boring the next number unless it has one.
  std::string Number(const PlotBoring& boring);
  // "(17)"
  static std::string NumberText(size_t number);
  // Whether an identity looks like one of the numbers, so that it must not be a label itself.
  static bool IsNumberText(std::string_view id);

  const std::vector<const PlotBoring*>& Borings() const { return borings_; }

 private:
  size_t most_;
  std::unordered_map<const PlotBoring*, size_t> numbers_;
  std::vector<const PlotBoring*> borings_;
};

enum class LabelKind { kName, kNumber };

struct ChosenLabel {
  LabelKind kind;
  LabelPlace place;
};

// Places a label for each of the symbols and adds them to the obstacles: names where all around get a label
// too, numbers where symbols are close together, and nothing where there is no room for either. `places`
// gives the places for a symbol's label of a kind. Of many symbols side by side that find no room only the
// first few try, so that the time grows no faster than their number.
std::vector<std::optional<ChosenLabel>> ChooseLabels(
    Obstacles& obstacles, std::span<const SheetPoint> symbols,
    const std::function<LabelPlaces(size_t, LabelKind)>& places);

// "H 12.40" to the right (höger), "V 3.20" to the left (vänster), "0.00" on the line; empty for a boring
// without one.
std::string OffsetLabel(const PlotBoring& boring);

// The symbol of a boring without a place along the road: an empty square, where others are circles; a small
// one where they are dots.
void DrawStray(Canvas& canvas, SheetPoint at, bool dot);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_BORING_LABELS_H_
