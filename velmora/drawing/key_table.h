// The table of the numbers that stand for borings' names on a sheet.
#ifndef VELMORA_DRAWING_KEY_TABLE_H_
#define VELMORA_DRAWING_KEY_TABLE_H_

#include <string>
#include <vector>

#include "velmora/drawing/boring_labels.h"
#include "velmora/drawing/canvas.h"

namespace velmora::drawing {

enum class KeySpacing { kWide, kDense };  // dense ones are without offsets

class KeyTable {
 public:
  // In columns side by side within this width.
  KeyTable(const BoringKey& key, double width, KeySpacing spacing = KeySpacing::kWide);

  // 0 for an empty key.
  double Height() const { return height_; }
  void Draw(Canvas& canvas, SheetPoint upper_left) const;

 private:
  struct Entry {
    const PlotBoring* boring;
    std::vector<std::string> name;  // lines
    size_t column = 0;
    size_t row = 0;  // of its first line
  };

  // Fills columns of `rows` lines. Returns whether they hold all entries.
  bool Fill(size_t columns, size_t rows);

  bool wide_;
  double pitch_;
  std::vector<Entry> entries_;
  double number_width_ = 0;
  double name_width_ = 0;
  double column_width_ = 0;
  double height_ = 0;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_KEY_TABLE_H_
