#include "velmora/drawing/key_table.h"

#include <algorithm>

#include "velmora/drawing/labels.h"
#include "velmora/drawing/style.h"

namespace velmora::drawing {
namespace {

constexpr double kKeyInset = 4;  // mm
constexpr double kHeading = 9;
constexpr double kPitch = 3.2;
constexpr double kDensePitch = 2.7;
constexpr double kEntryGap = 2;   // between the parts of an entry
constexpr double kColumnGap = 6;  // between entries side by side
constexpr double kDenseGap = 4;
constexpr double kWidestName = 60;  // longer ones take several lines
constexpr size_t kMostLines = 8;

}  // namespace

KeyTable::KeyTable(const BoringKey& key, double width, KeySpacing spacing)
    : wide_(spacing == KeySpacing::kWide), pitch_(wide_ ? kPitch : kDensePitch) {
  if (key.Borings().empty()) return;
  number_width_ = TextWidth(BoringKey::NumberText(key.Borings().size()), kSmallSize);
  double offset_width = 0;
  size_t lines = 0;
  for (const PlotBoring* boring : key.Borings()) {
    Entry& entry =
        entries_.emplace_back(Entry{boring, WrapText(boring->id, kSmallSize, kWidestName, kMostLines)});
    if (entry.name.empty()) entry.name.emplace_back("(no name)");
    for (const std::string& line : entry.name)
      name_width_ = std::max(name_width_, TextWidth(line, kSmallSize));
    offset_width = std::max(offset_width, TextWidth(OffsetLabel(*boring), kSmallSize));
    lines += entry.name.size();
  }
  const double column_gap = wide_ ? kColumnGap : kDenseGap;
  column_width_ =
      number_width_ + kEntryGap + name_width_ + (wide_ ? kEntryGap + offset_width : 0) + column_gap;
  const auto columns =
      std::max<size_t>(1, static_cast<size_t>((width - 2 * kKeyInset + column_gap) / column_width_));
  size_t rows = (lines + columns - 1) / columns;
  while (!Fill(columns, rows)) ++rows;
  height_ = kHeading + static_cast<double>(rows) * pitch_ + (wide_ ? kKeyInset : kKeyInset / 2);
}

bool KeyTable::Fill(size_t columns, size_t rows) {
  size_t column = 0;
  size_t row = 0;
  for (Entry& entry : entries_) {
    if (row > 0 && row + entry.name.size() > rows) {
      ++column;
      row = 0;
    }
    entry.column = column;
    entry.row = row;
    row += entry.name.size();
    if (row > rows) return false;
  }
  return column < columns;
}

void KeyTable::Draw(Canvas& canvas, SheetPoint upper_left) const {
  if (entries_.empty()) return;
  const TextFormat text = {.size = kSmallSize, .anchor = TextAnchor::kStart};
  canvas.Text({upper_left.x + kKeyInset, upper_left.y + 5},
              wide_ ? "Key to the numbers: boring and offset" : "Key to the numbers",
              {.size = kLabelSize, .anchor = TextAnchor::kStart, .bold = true}, kText);
  for (size_t i = 0; i < entries_.size(); ++i) {
    const Entry& entry = entries_[i];
    const Style& style = entry.boring->HasOffset() ? kBoringText : kStrayText;
    const double x = upper_left.x + kKeyInset + static_cast<double>(entry.column) * column_width_;
    double y = upper_left.y + kHeading + (static_cast<double>(entry.row) + 0.5) * pitch_;
    canvas.Text({x, y}, BoringKey::NumberText(i + 1), text, style);
    const double name_x = x + number_width_ + kEntryGap;
    if (const std::string offset = OffsetLabel(*entry.boring); wide_ && !offset.empty())
      canvas.Text({name_x + name_width_ + kEntryGap, y}, offset, text, style);
    for (const std::string& line : entry.name) {
      canvas.Text({name_x, y}, line, text, style);
      y += pitch_;
    }
  }
}

}  // namespace velmora::drawing
